// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogtest.h"
#include "showndialog.h"

#include <functional>

using Act = std::function<void(const ShownDialog &dialog)>;

Q_DECLARE_METATYPE(Act)

namespace {

QTouchDevice *touchScreen()
{
    static QTouchDevice *screen = QTest::createTouchDevice();
    return screen;
}

QPoint middle(const ShownDialog &dialog, const char *id)
{
    return ShownDialog::place(dialog.item(id)).center().toPoint();
}

Act click(const char *id)
{
    return [id](const ShownDialog &dialog) {
        QTest::mouseClick(dialog.window(), Qt::LeftButton, {}, middle(dialog, id));
    };
}

Act tap(const char *id)
{
    return [id](const ShownDialog &dialog) {
        const QPoint point = middle(dialog, id);
        QTest::touchEvent(dialog.window(), touchScreen()).press(0, point);
        QTest::touchEvent(dialog.window(), touchScreen()).release(0, point);
    };
}

Act type(const QList<Qt::Key> &keys)
{
    return [keys](const ShownDialog &dialog) {
        for (const Qt::Key key : keys) {
            QTest::keyClick(dialog.window(), key);
        }
    };
}

void close(const ShownDialog &dialog)
{
    dialog.window()->close();
}

void send(const ShownDialog &dialog, QEvent::Type type, int key, const QString &text, bool isRepeated)
{
    QKeyEvent event(type, key, Qt::NoModifier, text, isRepeated);
    QCoreApplication::sendEvent(dialog.window(), &event);
}

/** What the toolkit makes of a key that is held down. */
void repeat(const ShownDialog &dialog, int key, const QString &text)
{
    for (int i = 0; i < 3; ++i) {
        send(dialog, QEvent::KeyRelease, key, text, true);
        send(dialog, QEvent::KeyPress, key, text, true);
    }
}

void heldKeys()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("text");

    QTest::newRow("Enter") << int(Qt::Key_Return) << QStringLiteral("\r");
    QTest::newRow("Enter of the number pad") << int(Qt::Key_Enter) << QStringLiteral("\r");
    QTest::newRow("Space") << int(Qt::Key_Space) << QStringLiteral(" ");
    QTest::newRow("Escape") << int(Qt::Key_Escape) << QStringLiteral("\x1b");
    QTest::newRow("Back") << int(Qt::Key_Back) << QString();
}

}

/** Every way of answering the dialog, and that one answer is all it ever gives. */
class DialogAnswersTest : public DialogTest
{
    Q_OBJECT

private Q_SLOTS:
    void waitsToBeShown();
    void answers_data();
    void answers();
    void answersOnce_data();
    void answersOnce();
    void answersFromInsideOfAnAnswerOnce();
    void twoFingersGiveOneAnswer();
    void keyHeldDownSinceBeforeIsNoAnswer_data();
    void keyHeldDownSinceBeforeIsNoAnswer();
    void keyLetGoIsNoAnswer_data();
    void keyLetGoIsNoAnswer();
    void keyHeldDownAnswersOnce_data();
    void keyHeldDownAnswersOnce();
    void otherInputIsNoAnswer_data();
    void otherInputIsNoAnswer();
};

void DialogAnswersTest::waitsToBeShown()
{
    PackageTexts texts;
    const ShownDialog dialog(&texts);

    QVERIFY(!dialog.wasVisibleEarly());
    QVERIFY(dialog.window()->isVisible());
    QCOMPARE(dialog.window()->title(), QStringLiteral("Install this app?"));
    QCOMPARE(dialog.requested() + dialog.dismissed(), 0);
}

void DialogAnswersTest::answers_data()
{
    QTest::addColumn<Act>("act");
    QTest::addColumn<bool>("accepts");

    QTest::newRow("click on install") << click("install") << true;
    QTest::newRow("tap on install") << tap("install") << true;
    QTest::newRow("Tab, Enter") << type({Qt::Key_Tab, Qt::Key_Return}) << true;
    QTest::newRow("Tab, Enter of the number pad") << type({Qt::Key_Tab, Qt::Key_Enter}) << true;
    QTest::newRow("Tab, Space") << type({Qt::Key_Tab, Qt::Key_Space}) << true;
    QTest::newRow("Right, Enter") << type({Qt::Key_Right, Qt::Key_Return}) << true;

    QTest::newRow("click on cancel") << click("cancel") << false;
    QTest::newRow("tap on cancel") << tap("cancel") << false;
    QTest::newRow("Enter") << type({Qt::Key_Return}) << false;
    QTest::newRow("Enter of the number pad") << type({Qt::Key_Enter}) << false;
    QTest::newRow("Space") << type({Qt::Key_Space}) << false;
    QTest::newRow("Escape") << type({Qt::Key_Escape}) << false;
    QTest::newRow("Back") << type({Qt::Key_Back}) << false;
    QTest::newRow("Tab, Escape") << type({Qt::Key_Tab, Qt::Key_Escape}) << false;
    QTest::newRow("Tab, Back") << type({Qt::Key_Tab, Qt::Key_Back}) << false;
    QTest::newRow("Tab, Tab, Escape") << type({Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Escape}) << false;
    QTest::newRow("close") << Act(close) << false;
}

void DialogAnswersTest::answers()
{
    QFETCH(Act, act);
    QFETCH(bool, accepts);
    PackageTexts texts;
    const ShownDialog dialog(&texts);

    act(dialog);

    QCOMPARE(dialog.requested(), accepts ? 1 : 0);
    QCOMPARE(dialog.dismissed(), accepts ? 0 : 1);
}

void DialogAnswersTest::answersOnce_data()
{
    QTest::addColumn<Act>("first");
    QTest::addColumn<Act>("second");
    QTest::addColumn<bool>("accepts");

    const struct
    {
        const char *name;
        Act act;
        bool accepts;
    } acts[] = {
            {"tap on install", tap("install"), true},
            {"click on install", click("install"), true},
            {"Enter on install", type({Qt::Key_Tab, Qt::Key_Return}), true},
            {"tap on cancel", tap("cancel"), false},
            {"Enter on cancel", type({Qt::Key_Return}), false},
            {"Space on cancel", type({Qt::Key_Space}), false},
            {"Escape", type({Qt::Key_Escape}), false},
            {"Back", type({Qt::Key_Back}), false},
            {"close", close, false},
    };
    for (const auto &first : acts) {
        for (const auto &second : acts) {
            QTest::addRow("%s, then %s", first.name, second.name) << first.act << second.act << first.accepts;
        }
    }
}

void DialogAnswersTest::answersOnce()
{
    QFETCH(Act, first);
    QFETCH(Act, second);
    QFETCH(bool, accepts);
    PackageTexts texts;
    const ShownDialog dialog(&texts);

    first(dialog);
    second(dialog);

    QCOMPARE(dialog.requested(), accepts ? 1 : 0);
    QCOMPARE(dialog.dismissed(), accepts ? 0 : 1);
}

void DialogAnswersTest::answersFromInsideOfAnAnswerOnce()
{
    PackageTexts texts;
    const ShownDialog dialog(&texts);
    // What a listener does may bring the next event along.
    connect(dialog.window(), SIGNAL(requestInstall()), dialog.window(), SLOT(close()));

    tap("install")(dialog);

    QVERIFY(!dialog.window()->isVisible());
    QCOMPARE(dialog.requested(), 1);
    QCOMPARE(dialog.dismissed(), 0);
}

void DialogAnswersTest::twoFingersGiveOneAnswer()
{
    PackageTexts texts;
    const ShownDialog dialog(&texts);
    const QPoint install = middle(dialog, "install");
    const QPoint cancel = middle(dialog, "cancel");

    QTest::touchEvent(dialog.window(), touchScreen()).press(0, install).press(1, cancel);
    QTest::touchEvent(dialog.window(), touchScreen()).release(0, install).release(1, cancel);

    QCOMPARE(dialog.requested() + dialog.dismissed(), 1);
}

void DialogAnswersTest::keyHeldDownSinceBeforeIsNoAnswer_data()
{
    heldKeys();
}

void DialogAnswersTest::keyHeldDownSinceBeforeIsNoAnswer()
{
    QFETCH(int, key);
    QFETCH(QString, text);
    PackageTexts texts;
    const ShownDialog dialog(&texts);

    repeat(dialog, key, text);
    send(dialog, QEvent::KeyRelease, key, text, false);

    QCOMPARE(dialog.requested() + dialog.dismissed(), 0);
    QTest::keyClick(dialog.window(), Qt::Key(key));
    QCOMPARE(dialog.dismissed(), 1);
}

void DialogAnswersTest::keyLetGoIsNoAnswer_data()
{
    heldKeys();
}

void DialogAnswersTest::keyLetGoIsNoAnswer()
{
    QFETCH(int, key);
    QFETCH(QString, text);
    PackageTexts texts;
    const ShownDialog dialog(&texts);

    send(dialog, QEvent::KeyRelease, key, text, false);

    QCOMPARE(dialog.requested() + dialog.dismissed(), 0);
}

void DialogAnswersTest::keyHeldDownAnswersOnce_data()
{
    heldKeys();
}

void DialogAnswersTest::keyHeldDownAnswersOnce()
{
    QFETCH(int, key);
    QFETCH(QString, text);
    PackageTexts texts;
    const ShownDialog dialog(&texts);
    QTest::keyClick(dialog.window(), Qt::Key_Tab);

    send(dialog, QEvent::KeyPress, key, text, false);
    repeat(dialog, key, text);
    send(dialog, QEvent::KeyRelease, key, text, false);

    QCOMPARE(dialog.requested() + dialog.dismissed(), 1);
}

void DialogAnswersTest::otherInputIsNoAnswer_data()
{
    QTest::addColumn<Act>("act");

    QTest::newRow("other keys") << type({Qt::Key_A, Qt::Key_Y, Qt::Key_Tab, Qt::Key_Down, Qt::Key_PageDown, Qt::Key_Up,
                                         Qt::Key_PageUp, Qt::Key_Left, Qt::Key_F1, Qt::Key_Menu});
    QTest::newRow("right button") << Act([](const ShownDialog &dialog) {
        QTest::mouseClick(dialog.window(), Qt::RightButton, {}, middle(dialog, "install"));
    });
    QTest::newRow("click beside the buttons") << Act(
            [](const ShownDialog &dialog) { QTest::mouseClick(dialog.window(), Qt::LeftButton, {}, QPoint(2, 2)); });
    QTest::newRow("finger that slips off") << Act([](const ShownDialog &dialog) {
        QTest::touchEvent(dialog.window(), touchScreen()).press(0, middle(dialog, "install"));
        QTest::touchEvent(dialog.window(), touchScreen()).move(0, QPoint(2, 2));
        QTest::touchEvent(dialog.window(), touchScreen()).release(0, QPoint(2, 2));
    });
    QTest::newRow("opening the path") << tap("file");
}

void DialogAnswersTest::otherInputIsNoAnswer()
{
    QFETCH(Act, act);
    PackageTexts texts;
    const ShownDialog dialog(&texts);

    act(dialog);

    QCOMPARE(dialog.requested() + dialog.dismissed(), 0);
    QVERIFY(dialog.window()->isVisible());
    tap("install")(dialog);
    QCOMPARE(dialog.requested(), 1);
}

int main(int argc, char **argv)
{
    return runDialogTest<DialogAnswersTest>(argc, argv);
}

#include "tst_dialoganswers.moc"
