// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogtest.h"
#include "showndialog.h"

/** The path of the package's file, which is longer than a line as a rule. */
class DialogPathTest : public DialogTest
{
    Q_OBJECT

private Q_SLOTS:
    void pathIsElidedInTheMiddle();
    void pathOpens_data();
    void pathOpens();
};

void DialogPathTest::pathIsElidedInTheMiddle()
{
    PackageTexts texts;
    const ShownDialog dialog(&texts, QSize(320, 480));

    const QQuickItem *path = dialog.item("path");
    QVERIFY(path->property("truncated").toBool());
    QCOMPARE(path->property("elide").toInt(), int(Qt::ElideMiddle));
    QCOMPARE(path->property("lineCount").toInt(), 1);
}

void DialogPathTest::pathOpens_data()
{
    QTest::addColumn<bool>("byKey");

    QTest::newRow("by touch") << false;
    QTest::newRow("by key") << true;
}

void DialogPathTest::pathOpens()
{
    QFETCH(bool, byKey);
    PackageTexts texts;
    texts.fileName = QLatin1Char('/') + QStringLiteral("folder/").repeated(580) + QStringLiteral("package.rpm");
    const ShownDialog dialog(&texts);
    const QQuickItem *path = dialog.item("path");
    const auto press = [&dialog, byKey] {
        if (byKey) {
            QTest::keyClick(dialog.window(), Qt::Key_Space);
        } else {
            const QPointF place = ShownDialog::place(dialog.item("file")).topLeft();
            QTest::mouseClick(dialog.window(), Qt::LeftButton, {}, place.toPoint() + QPoint(20, 20));
        }
    };
    if (byKey) {
        QTest::keyClick(dialog.window(), Qt::Key_Backtab, Qt::ShiftModifier);
    }
    const qreal closedHeight = path->height();

    press();
    dialog.awaitFrame();

    QCOMPARE(path->property("text").toString(), texts.fileName);
    QVERIFY(!path->property("truncated").toBool());
    QVERIFY(path->property("lineCount").toInt() > 10);
    QVERIFY(path->property("contentWidth").toReal() <= path->width());

    press();
    dialog.awaitFrame();

    QVERIFY(path->property("truncated").toBool());
    QCOMPARE(path->height(), closedHeight);
}

int main(int argc, char **argv)
{
    return runDialogTest<DialogPathTest>(argc, argv);
}

#include "tst_dialogpath.moc"
