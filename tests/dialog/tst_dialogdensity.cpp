// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogtest.h"
#include "showndialog.h"

#include <QGuiApplication>
#include <QProcess>
#include <QTest>

/** Sizes on a display with 320 pixels an inch, twice those of density-independent pixels. */
class DialogDensityTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fingersFindTheirTargets()
    {
        const Catalogues english;
        const ShownDialog dialog(PackageTexts::ordinary(), QSize(1080, 1920));

        for (const char *target : {"cancel", "install", "file"}) {
            QVERIFY(dialog.item(target)->height() >= 2 * 44);
            QVERIFY(dialog.item(target)->width() >= 2 * 44);
        }
        const QRectF cancel = dialog.place("cancel");
        const QRectF install = dialog.place("install");
        QVERIFY(install.left() - cancel.right() >= 2 * 8);
        QVERIFY(QRectF(0, 0, 1080, 1920).contains(cancel | install));
    }
};

int main(int argc, char **argv)
{
    QProcess server;
    server.start(QStringLiteral("Xvfb"),
                 {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"), QStringLiteral("0"),
                  QStringLiteral("1080x1920x24"), QStringLiteral("-dpi"), QStringLiteral("320"),
                  QStringLiteral("-nolisten"), QStringLiteral("tcp")});
    if (!server.waitForReadyRead()) {
        qFatal("No display from Xvfb: %s", qPrintable(server.errorString()));
    }
    qputenv("DISPLAY", ':' + server.readLine().trimmed());
    qputenv("QT_QPA_PLATFORM", "xcb");
    qputenv("QT_QUICK_BACKEND", "software");

    int failed = 1;
    {
        QGuiApplication application(argc, argv);
        DialogDensityTest test;
        failed = QTest::qExec(&test, argc, argv);
    }
    server.terminate();
    return server.waitForFinished() ? failed : 1;
}

#include "tst_dialogdensity.moc"
