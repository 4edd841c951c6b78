// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "fuzzing.h"
#include "installationerror.h"
#include "texts.h"

#include <QCoreApplication>
#include <QTranslator>

namespace {

/** A catalogue with one text for everything, or without any text. */
class OneText : public QTranslator
{
public:
    bool isEmpty() const override { return text.isEmpty(); }
    QString translate(const char *, const char *, const char *, int) const override { return text; }

    QString text;
};

OneText &catalogue()
{
    static OneText text;
    return text;
}

}

int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    static const QCoreApplication application(*argc, *argv);
    QCoreApplication::installTranslator(&catalogue());
    return 0;
}

/** The name of the package manager's error, and after a line feed the text that its catalogue has for it. */
int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString input = QString::fromUtf8(bytes(data, size));
    const QString name = input.section(QLatin1Char('\n'), 0, 0);
    const QString code = name.section(QLatin1Char('.'), -1);
    catalogue().text = input.contains(QLatin1Char('\n')) ? input.section(QLatin1Char('\n'), 1) : QString();

    const QString description = InstallationError::describe(name);

    const QString text = catalogue().text.isNull() ? "zarn_installation_error_desc_"_s + code : catalogue().text;
    // A text may use the placeholders of the pattern: Known behaviour 66.
    require(text.contains(QLatin1Char('%')) || description == text + " (code: "_s + code + ")"_s);
    return 0;
}
