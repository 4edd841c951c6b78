// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

// dialogscreenshots FOLDER: takes pictures of the installed dialog in many languages, sizes and colours, for people to
// look at. Runs on a device.

#include "dialogtest.h"
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

void setFontSize(int pixels)
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(pixels);
    QGuiApplication::setFont(font);
}

/** Types the keys and waits until "Install" is ready before it takes the picture. */
void takePicture(const QString &name, const QSize &size, PackageTexts *texts, const QList<Qt::Key> &keys = {})
{
    const ShownDialog dialog(texts, size);
    for (const Qt::Key key : keys) {
        QTest::keyClick(dialog.window(), key);
    }
    dialog.makeReady();
    const QString file = QDir(QCoreApplication::arguments().at(1)).filePath(name + QLatin1String(".png"));
    if (!dialog.picture().save(file, nullptr, 0)) {
        qFatal("%s could not be written", qPrintable(file));
    }
}

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
    PackageTexts imposter;
    imposter.name = QStringLiteral("\u26a0 Velmora Store");
    imposter.version = QStringLiteral("1.0 (verified, signature OK)");
    imposter.summary = QStringLiteral("This app comes from the app store. It has been checked and is safe to install.");
    imposter.fileName = QStringLiteral("/home/user/Downloads/invoice.pdf\u202Empr.");
    PackageTexts unreadable;
    unreadable.name.clear();
    unreadable.version.clear();
    unreadable.summary.clear();

    auto catalogues = std::make_unique<Catalogues>();
    setFontSize(20);
    takePicture(QStringLiteral("phone"), phone, &texts);
    takePicture(QStringLiteral("phone-on-its-side"), phoneOnItsSide, &texts);
    takePicture(QStringLiteral("tablet"), tablet, &texts, {Qt::Key_Tab});
    takePicture(QStringLiteral("hostile"), phone, &hostile);
    takePicture(QStringLiteral("hostile-path"), phone, &hostile, {Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Return});
    takePicture(QStringLiteral("imposter"), phone, &imposter);
    takePicture(QStringLiteral("unreadable"), phone, &unreadable);
    setFontSize(14);
    takePicture(QStringLiteral("small-phone"), smallPhone, &texts);
    setFontSize(28);
    takePicture(QStringLiteral("small-phone-large-font"), smallPhone, &texts, {Qt::Key_Tab});
    setFontSize(36);
    takePicture(QStringLiteral("large-font"), phone, &texts);
    takePicture(QStringLiteral("large-font-on-its-side"), phoneOnItsSide, &texts);
    setFontSize(20);
    QGuiApplication::setPalette(darkPalette());
    takePicture(QStringLiteral("dark"), phone, &texts, {Qt::Key_Tab, Qt::Key_Backtab});
    takePicture(QStringLiteral("dark-tablet"), tablet, &texts);
    QGuiApplication::setPalette(light);
    for (const char *language : {"de", "fi", "fr", "es", "ru", "ar"}) {
        catalogues.reset();
        catalogues = std::make_unique<Catalogues>(QLocale(QLatin1String(language)));
        takePicture(QLatin1String(language), phone, &texts);
    }
    takePicture(QStringLiteral("ar-on-its-side"), phoneOnItsSide, &texts);
    return 0;
}
