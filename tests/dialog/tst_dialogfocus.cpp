// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogtest.h"
#include "showndialog.h"

/** Where the keyboard focus is, and where it goes. */
class DialogFocusTest : public DialogTest
{
    Q_OBJECT

private Q_SLOTS:
    void safeActionHasTheFocus();
    void tabMovesFocus();
    void arrowsMoveFocusBetweenActions_data();
    void arrowsMoveFocusBetweenActions();
};

void DialogFocusTest::safeActionHasTheFocus()
{
    PackageTexts texts;
    const ShownDialog dialog(&texts);

    QCOMPARE(dialog.window()->activeFocusItem(), dialog.item("cancel"));
    QCOMPARE(dialog.window()->contentItem()->nextItemInFocusChain(), dialog.item("cancel"));
}

void DialogFocusTest::tabMovesFocus()
{
    PackageTexts texts;
    const ShownDialog dialog(&texts);

    for (const char *next : {"install", "file", "cancel"}) {
        QTest::keyClick(dialog.window(), Qt::Key_Tab);
        QCOMPARE(dialog.window()->activeFocusItem(), dialog.item(next));
    }
    for (const char *previous : {"file", "install", "cancel"}) {
        QTest::keyClick(dialog.window(), Qt::Key_Backtab, Qt::ShiftModifier);
        QCOMPARE(dialog.window()->activeFocusItem(), dialog.item(previous));
    }
}

void DialogFocusTest::arrowsMoveFocusBetweenActions_data()
{
    QTest::addColumn<QLocale>("locale");

    QTest::newRow("left to right") << QLocale::c();
    QTest::newRow("right to left") << QLocale(QLocale::Arabic);
}

void DialogFocusTest::arrowsMoveFocusBetweenActions()
{
    QFETCH(QLocale, locale);
    speak(locale);
    PackageTexts texts;
    const ShownDialog dialog(&texts);

    for (const Qt::Key key : {Qt::Key_Right, Qt::Key_Left}) {
        QTest::keyClick(dialog.window(), key);
        QCOMPARE(dialog.window()->activeFocusItem(), dialog.item("install"));
        QTest::keyClick(dialog.window(), key);
        QCOMPARE(dialog.window()->activeFocusItem(), dialog.item("cancel"));
    }
}

int main(int argc, char **argv)
{
    return runDialogTest<DialogFocusTest>(argc, argv);
}

#include "tst_dialogfocus.moc"
