// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

// Pictures of the dialog in all its shapes, for people to look at: PROGRAM FOLDER. On a device, for the dialog is the
// installed one.

#include "catalogues.h"
#include "showndialog.h"

#include <QDir>
#include <QGuiApplication>
#include <QPalette>
#include <QTest>

namespace {

QPalette darkPalette()
{
    QPalette palette(QColor(0x30, 0x33, 0x38), QColor(0x1b, 0x1d, 0x21));
    palette.setColor(QPalette::Base, QColor(0x26, 0x29, 0x2e));
    palette.setColor(QPalette::Highlight, QColor(0x3d, 0x8e, 0xe6));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

class Studio
{
public:
    explicit Studio(const QString &folder)
        : m_folder(folder)
    {
    }

    void speak(const QLocale &locale)
    {
        m_catalogues.reset();
        m_catalogues = std::make_unique<Catalogues>(locale);
    }

    void setFont(int pixels)
    {
        QFont font(QStringLiteral("DejaVu Sans"));
        font.setPixelSize(pixels);
        QGuiApplication::setFont(font);
    }

    void take(const QString &name, const QSize &size, PackageTexts *texts, const QList<Qt::Key> &keys = {})
    {
        ShownDialog dialog(texts, size);
        for (const Qt::Key key : keys) {
            QTest::keyClick(dialog.window(), key);
        }
        dialog.awaitFrame();
        const QString file = QDir(m_folder).filePath(name + QLatin1String(".png"));
        if (!dialog.picture().save(file, nullptr, 0)) {
            qFatal("%s could not be written", qPrintable(file));
        }
    }

private:
    QString m_folder;
    std::unique_ptr<Catalogues> m_catalogues = std::make_unique<Catalogues>();
};

}

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    QGuiApplication application(argc, argv);
    const QPalette light = QGuiApplication::palette();

    const QSize phone(540, 960);
    const QSize phoneOnItsSide(960, 540);
    const QSize smallPhone(320, 480);
    const QSize tablet(1280, 800);

    PackageTexts texts;
    PackageTexts hostile;
    hostile.name =
            QStringLiteral("<b>bold</b>\u202Etxt.evil\n<img src='http://x/'>") + QString(10000, QLatin1Char('W'));
    hostile.version = QStringLiteral("1.0\u0007\u2066") + QString(1000, QLatin1Char('9'));
    hostile.summary = QStringLiteral("<a href='x'>Click</a> & win\r\n\n\t").repeated(300);
    hostile.fileName = QLatin1Char('/') + QStringLiteral("long-folder-name/").repeated(200) + QStringLiteral("p.rpm");
    PackageTexts unreadable;
    unreadable.name.clear();
    unreadable.version.clear();
    unreadable.summary.clear();

    Studio studio(application.arguments().at(1));
    studio.setFont(20);
    studio.take(QStringLiteral("phone"), phone, &texts);
    studio.take(QStringLiteral("phone-on-its-side"), phoneOnItsSide, &texts);
    studio.take(QStringLiteral("tablet"), tablet, &texts, {Qt::Key_Tab});
    studio.take(QStringLiteral("hostile"), phone, &hostile);
    studio.take(QStringLiteral("hostile-path"), phone, &hostile, {Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Return});
    studio.take(QStringLiteral("unreadable"), phone, &unreadable);
    studio.setFont(14);
    studio.take(QStringLiteral("small-phone"), smallPhone, &texts);
    studio.setFont(28);
    studio.take(QStringLiteral("small-phone-large-font"), smallPhone, &texts, {Qt::Key_Tab});
    studio.setFont(36);
    studio.take(QStringLiteral("large-font"), phone, &texts);
    studio.take(QStringLiteral("large-font-on-its-side"), phoneOnItsSide, &texts);
    studio.setFont(20);
    QGuiApplication::setPalette(darkPalette());
    studio.take(QStringLiteral("dark"), phone, &texts, {Qt::Key_Tab, Qt::Key_Backtab});
    studio.take(QStringLiteral("dark-tablet"), tablet, &texts);
    QGuiApplication::setPalette(light);
    for (const char *language : {"ar", "de", "fi", "fr", "es", "ru"}) {
        studio.speak(QLocale(QLatin1String(language)));
        studio.take(QLatin1String(language), phone, &texts);
    }
    studio.speak(QLocale(QStringLiteral("ar")));
    studio.take(QStringLiteral("ar-on-its-side"), phoneOnItsSide, &texts);
    return 0;
}
