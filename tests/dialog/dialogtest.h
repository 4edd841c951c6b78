// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QCoreApplication>
#include <QFont>
#include <QGuiApplication>
#include <QLocale>
#include <QPalette>
#include <QTest>
#include <QTranslator>

#include <memory>
#include <utility>

/**
 * Loads a locale's catalogue over the English one, as the service does in a session of that locale, for as long as the
 * object lives.
 */
class Catalogues
{
public:
    explicit Catalogues(const QLocale &locale = QLocale::c())
    {
        const QString folder = QStringLiteral("/usr/share/translations");
        const QString name = QStringLiteral("velmora-installationhandler");
        QLocale::setDefault(locale);
        if (!m_english.load(name + QLatin1String("_eng_en"), folder)) {
            qFatal("No engineering English");
        }
        QCoreApplication::installTranslator(&m_english);
        // Qt treats the locale of a session in Brazil and QLocale("pt_BR") differently: it looks for the catalogue
        // "pt_BR" first in a session, for "pt" otherwise.
        if (m_own.load(name + QLatin1Char('-') + locale.name(), folder)) {
            QCoreApplication::installTranslator(&m_own);
        }
    }

    ~Catalogues() { QLocale::setDefault(m_before); }

    /** The language of the locale's own catalogue, empty if it has none. */
    QString ownLanguage() const { return m_own.language(); }

private:
    Q_DISABLE_COPY_MOVE(Catalogues)

    QLocale m_before;
    QTranslator m_english;
    QTranslator m_own;
};

/** A test of the installed dialog, in English and in the C locale. It fails if the program logs anything. */
class DialogTest : public QObject
{
    Q_OBJECT

protected:
    /** Changes the language of dialogs that are shown later; the language of the locale's catalogue, if it has one. */
    QString setLocale(const QLocale &locale)
    {
        m_catalogues.reset();
        m_catalogues = std::make_unique<Catalogues>(locale);
        return m_catalogues->ownLanguage();
    }

    /** Changes the font size of dialogs that are shown later. */
    void setFontSize(double pixels)
    {
        QFont font = m_font;
        font.setPixelSize(qRound(pixels));
        QGuiApplication::setFont(font);
    }

    /** The lines that the program has logged. The test expects them. */
    static QStringList takeLog() { return std::exchange(s_log, {}); }

protected Q_SLOTS:
    void init()
    {
        setLocale(QLocale::c());
        s_log.clear();
        s_previous = qInstallMessageHandler(recordMessage);
    }

    void cleanup()
    {
        qInstallMessageHandler(s_previous);
        m_catalogues.reset();
        QGuiApplication::setFont(m_font);
        QGuiApplication::setPalette(m_palette);
        QCOMPARE(s_log, QStringList());
    }

private:
    static void recordMessage(QtMsgType level, const QMessageLogContext &context, const QString &text)
    {
        s_log.append(text);
        s_previous(level, context, text);
    }

    static inline QStringList s_log;
    static inline QtMessageHandler s_previous = nullptr;

    std::unique_ptr<Catalogues> m_catalogues;
    QFont m_font = QGuiApplication::font();
    QPalette m_palette = QGuiApplication::palette();
};

/** Runs the tests of a class without a display. */
template<typename Test>
int runDialogTest(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    QGuiApplication application(argc, argv);
    Test test;
    return QTest::qExec(&test, argc, argv);
}

#define DIALOG_TEST_MAIN(Test)                                                                                         \
    int main(int argc, char **argv)                                                                                    \
    {                                                                                                                  \
        return runDialogTest<Test>(argc, argv);                                                                        \
    }
