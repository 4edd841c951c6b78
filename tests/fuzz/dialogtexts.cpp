// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "fuzzing.h"
#include "texts.h"

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTranslator>
#include <QVector>

#include <algorithm>
#include <array>
#include <memory>

namespace {

// The QML engine is not instrumented. Kinds of neighbouring characters take the place of edges.
constexpr int Categories = 30;
__attribute__((used, section("__libfuzzer_extra_counters"))) std::array<uint8_t, Categories * Categories> neighbours;

/** The package that the dialog shows, with the properties of the service's package reader. */
class PackageTexts : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString name READ text NOTIFY changed)
    Q_PROPERTY(QString version READ text NOTIFY changed)
    Q_PROPERTY(QString summary READ text NOTIFY changed)
    Q_PROPERTY(QString fileName READ text NOTIFY changed)

public:
    QString text() const { return m_text; }

    void setText(const QString &text)
    {
        m_text = text;
        emit changed();
    }

Q_SIGNALS:
    void changed();

private:
    QString m_text;
};

/**
 * The dialog, which is not on screen. It ends with the process, because the leak sanitizer does not look into the
 * memory of JavaScript's objects, and takes what only they point to for lost.
 */
class Dialog
{
public:
    static Dialog &instance()
    {
        static Dialog dialog;
        return dialog;
    }

    void show(const QString &text) { m_package.setText(text); }

    /** A text as the dialog cleans it. */
    QString harmless(const QString &text, int longest)
    {
        QVariant result;
        QMetaObject::invokeMethod(m_window.get(), "harmless", Q_RETURN_ARG(QVariant, result), Q_ARG(QVariant, text),
                                  Q_ARG(QVariant, longest));
        return result.toString();
    }

    QString property(const char *name) const { return m_window->property(name).toString(); }

    /** The texts of all items. */
    QStringList shown() const
    {
        QStringList texts;
        for (const QQuickItem *item : m_items) {
            texts.append(item->property("text").toString());
        }
        return texts;
    }

private:
    Dialog();

    void collect(QQuickItem *item)
    {
        if (item->inherits("QQuickText")) {
            m_items.append(item);
        }
        for (QQuickItem *child : item->childItems()) {
            collect(child);
        }
    }

    PackageTexts m_package;
    QQmlEngine m_engine;
    std::unique_ptr<QQuickWindow> m_window;
    QList<QQuickItem *> m_items;
};

Dialog::Dialog()
{
    m_engine.rootContext()->setContextProperty("rpmInfo"_s, &m_package);
    QQmlComponent component(&m_engine, QUrl::fromLocalFile(QStringLiteral(DIALOG)));
    m_window.reset(qobject_cast<QQuickWindow *>(component.create()));
    if (!m_window) {
        qFatal("No dialog: %s", qPrintable(component.errorString()));
    }
    collect(m_window->contentItem());
}

// Characters of the category Format with a shape of their own: marks over or before the numbers that follow.
bool isVisibleFormat(uint character)
{
    static const QVector<uint> Visible{0x600, 0x601, 0x602, 0x603, 0x604,   0x605,  0x6dd,
                                       0x70f, 0x890, 0x891, 0x8e2, 0x110bd, 0x110cd};
    return Visible.contains(character);
}

/** Whether a character shows nothing, changes the direction of its neighbours or ends a line. */
bool isDeceptive(uint character)
{
    switch (QChar::category(character)) {
    case QChar::Other_Format:
        // The joiners, which some languages need, are harmless.
        return character != 0x200c && character != 0x200d && !isVisibleFormat(character);
    case QChar::Separator_Space:
        return character != ' ';
    case QChar::Other_Control:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        return false;
    }
}

bool isHarmless(const QString &text)
{
    const QVector<uint> characters = text.toUcs4();
    return text.isValidUtf16() && std::none_of(characters.begin(), characters.end(), isDeceptive);
}

void noteNeighbours(const QString &text)
{
    int before = 0;
    for (const uint character : text.toUcs4()) {
        const int category = QChar::category(character);
        neighbours[size_t(before * Categories + category)] = 1;
        before = category;
    }
}

}

int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QML_DISABLE_DISK_CACHE", "1");
    // It outlives the dialog, and has no end, since Qt's offscreen platform would lose its screen then.
    static const auto *const application = new QGuiApplication(*argc, *argv);
    Q_UNUSED(application)
    static QTranslator catalogue;
    if (!catalogue.load(QStringLiteral(CATALOGUE))) {
        qFatal("No texts");
    }
    QCoreApplication::installTranslator(&catalogue);
    Dialog::instance();
    return 0;
}

/** A package's texts and path in the dialog: one line each, without characters that show nothing or turn others. */
int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString text = QString::fromUtf8(bytes(data, size));
    noteNeighbours(text);

    Dialog &dialog = Dialog::instance();
    dialog.show(text);
    for (QString shown : dialog.shown()) {
        // The marks that the dialog puts around a version and before a path.
        require(isHarmless(shown.remove(QChar(0x2068)).remove(QChar(0x2069)).remove(QChar(0x200e))));
    }
    require(dialog.property("packageVersion").size() <= 65
            && !dialog.property("packageVersion").contains(QLatin1Char(' ')));
    require(dialog.property("packageFile").size() <= 4097);

    const QString once = dialog.harmless(text, 1000);
    require(isHarmless(once) && once.size() <= 1001);
    require(dialog.harmless(once, 1001) == once);
    return 0;
}

#include "dialogtexts.moc"
