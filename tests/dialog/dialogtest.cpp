// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogtest.h"

namespace {

QStringList s_log;
QtMessageHandler s_previous = nullptr;

void note(QtMsgType level, const QMessageLogContext &context, const QString &text)
{
    s_log.append(text);
    s_previous(level, context, text);
}

}

void DialogTest::speak(const QLocale &locale)
{
    m_catalogues.reset();
    m_catalogues = std::make_unique<Catalogues>(locale);
}

void DialogTest::init()
{
    speak(QLocale::c());
    s_log.clear();
    s_previous = qInstallMessageHandler(note);
}

void DialogTest::cleanup()
{
    qInstallMessageHandler(s_previous);
    m_catalogues.reset();
    QCOMPARE(s_log, QStringList());
}
