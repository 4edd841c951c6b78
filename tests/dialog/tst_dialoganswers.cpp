// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogtest.h"
#include "pointers.h"
#include "showndialog.h"

#include <QMetaMethod>

#include <functional>

using Input = std::function<void(const ShownDialog &dialog)>;

Q_DECLARE_METATYPE(Input)

namespace {

Input click(const char *id)
{
    return [id](const ShownDialog &dialog) {
        QTest::mouseClick(dialog.window(), Qt::LeftButton, {}, dialog.middle(id));
    };
}

Input tap(const char *id)
{
    return [id](const ShownDialog &dialog) { ::tap(dialog.window(), dialog.middle(id)); };
}

Input type(const QList<Qt::Key> &keys)
{
    return [keys](const ShownDialog &dialog) {
        for (const Qt::Key key : keys) {
            QTest::keyClick(dialog.window(), key);
        }
    };
}

/** Moves the focus to "Install", then types a key with a modifier. */
Input typeOnInstall(Qt::Key key, Qt::KeyboardModifier modifier)
{
    return [=](const ShownDialog &dialog) {
        QTest::keyClick(dialog.window(), Qt::Key_Tab);
        QTest::keyClick(dialog.window(), key, modifier);
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

/** Releases a key that was pressed before the dialog was shown. */
Input release(int key, const QString &text)
{
    return [=](const ShownDialog &dialog) { send(dialog, QEvent::KeyRelease, key, text, false); };
}

/** Keeps holding a key that was pressed before the dialog was shown. */
Input keepHolding(int key, const QString &text)
{
    return [=](const ShownDialog &dialog) {
        for (int i = 0; i < 3; ++i) {
            send(dialog, QEvent::KeyRelease, key, text, true);
            send(dialog, QEvent::KeyPress, key, text, true);
        }
        release(key, text)(dialog);
    };
}

/** Moves the focus to "Install", then holds a key. */
Input hold(int key, const QString &text)
{
    return [=](const ShownDialog &dialog) {
        QTest::keyClick(dialog.window(), Qt::Key_Tab);
        send(dialog, QEvent::KeyPress, key, text, false);
        keepHolding(key, text)(dialog);
    };
}

const struct
{
    const char *name;
    Qt::Key key;
    QString text;
    bool accepts;
} AnsweringKeys[] = {
        {"Enter", Qt::Key_Return, QStringLiteral("\r"), true},
        {"Enter of the number pad", Qt::Key_Enter, QStringLiteral("\r"), true},
        {"Space", Qt::Key_Space, QStringLiteral(" "), true},
        {"Escape", Qt::Key_Escape, QStringLiteral("\x1b"), false},
        {"Back", Qt::Key_Back, QString(), false},
};

}

/** All ways to answer the dialog, which gives one answer only (Known behaviour 63). */
class DialogAnswersTest : public DialogTest
{
    Q_OBJECT

private Q_SLOTS:
    void waitsToBeShown()
    {
        const ShownDialog dialog;

        QVERIFY(!dialog.wasVisibleEarly());
        QVERIFY(dialog.window()->isVisible());
        QCOMPARE(dialog.window()->title(), QStringLiteral("Install this app?"));
        QCOMPARE(dialog.answers(), 0);
    }

    // A program of another version, which runs during an upgrade, connects these signals by their names.
    void hasTheSignalsOfItsInterface()
    {
        const ShownDialog dialog;
        const QMetaObject *type = dialog.window()->metaObject();
        QList<QByteArray> declared;
        for (int i = type->methodOffset(); i < type->methodCount(); ++i) {
            const QMetaMethod method = type->method(i);
            if (method.methodType() == QMetaMethod::Signal && !method.name().endsWith("Changed")) {
                declared.append(method.methodSignature());
            }
        }
        QCOMPARE(declared, QList<QByteArray>({"requestInstall()", "dismissed()"}));
    }

    void answers_data()
    {
        QTest::addColumn<Input>("input");
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
        QTest::newRow("close") << Input(close) << false;

        for (const auto &key : AnsweringKeys) {
            QTest::addRow("%s held", key.name) << hold(key.key, key.text) << key.accepts;
            QTest::addRow("Shift+%s", key.name) << typeOnInstall(key.key, Qt::ShiftModifier) << key.accepts;
            QTest::addRow("keypad's %s", key.name) << typeOnInstall(key.key, Qt::KeypadModifier) << key.accepts;
        }
    }

    void answers()
    {
        QFETCH(Input, input);
        QFETCH(bool, accepts);
        const ShownDialog dialog;
        dialog.makeReady();

        input(dialog);

        QCOMPARE(dialog.requested(), accepts ? 1 : 0);
        QCOMPARE(dialog.dismissed(), accepts ? 0 : 1);
    }

    void answersOnce_data()
    {
        QTest::addColumn<Input>("first");
        QTest::addColumn<Input>("second");
        QTest::addColumn<bool>("accepts");

        const struct
        {
            const char *name;
            Input input;
            bool accepts;
        } answers[] = {
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
        for (const auto &first : answers) {
            for (const auto &second : answers) {
                QTest::addRow("%s, then %s", first.name, second.name) << first.input << second.input << first.accepts;
            }
        }
    }

    void answersOnce()
    {
        QFETCH(Input, first);
        QFETCH(Input, second);
        QFETCH(bool, accepts);
        const ShownDialog dialog;
        dialog.makeReady();

        first(dialog);
        second(dialog);

        QCOMPARE(dialog.requested(), accepts ? 1 : 0);
        QCOMPARE(dialog.dismissed(), accepts ? 0 : 1);
    }

    void listenerThatClosesCausesNoSecondAnswer()
    {
        const ShownDialog dialog;
        dialog.makeReady();
        connect(dialog.window(), SIGNAL(requestInstall()), dialog.window(), SLOT(close()));

        tap("install")(dialog);

        QVERIFY(!dialog.window()->isVisible());
        QCOMPARE(dialog.requested(), 1);
        QCOMPARE(dialog.dismissed(), 0);
    }

    void twoFingersGiveOneAnswer()
    {
        const ShownDialog dialog;
        dialog.makeReady();
        const QPoint install = dialog.middle("install");
        const QPoint cancel = dialog.middle("cancel");

        QTest::touchEvent(dialog.window(), touchScreen()).press(0, install).press(1, cancel);
        QTest::touchEvent(dialog.window(), touchScreen()).release(0, install).release(1, cancel);

        QCOMPARE(dialog.answers(), 1);
    }

    void otherInputIsNoAnswer_data()
    {
        QTest::addColumn<Input>("input");

        QTest::newRow("other keys") << type({Qt::Key_A, Qt::Key_Y, Qt::Key_Tab, Qt::Key_Down, Qt::Key_PageDown,
                                             Qt::Key_Up, Qt::Key_PageUp, Qt::Key_Left, Qt::Key_F1, Qt::Key_Menu});
        QTest::newRow("right button") << Input([](const ShownDialog &dialog) {
            QTest::mouseClick(dialog.window(), Qt::RightButton, {}, dialog.middle("install"));
        });
        QTest::newRow("click beside the buttons") << Input([](const ShownDialog &dialog) {
            QTest::mouseClick(dialog.window(), Qt::LeftButton, {}, QPoint(2, 2));
        });
        QTest::newRow("finger that slips off") << Input([](const ShownDialog &dialog) {
            QTest::touchEvent(dialog.window(), touchScreen()).press(0, dialog.middle("install"));
            QTest::touchEvent(dialog.window(), touchScreen()).move(0, QPoint(2, 2));
            QTest::touchEvent(dialog.window(), touchScreen()).release(0, QPoint(2, 2));
        });
        QTest::newRow("opening the path") << tap("file");
        for (const auto &key : AnsweringKeys) {
            QTest::addRow("%s released", key.name) << release(key.key, key.text);
            QTest::addRow("%s held since before", key.name) << keepHolding(key.key, key.text);
            QTest::addRow("Ctrl+%s", key.name) << typeOnInstall(key.key, Qt::ControlModifier);
            QTest::addRow("Alt+%s", key.name) << typeOnInstall(key.key, Qt::AltModifier);
            QTest::addRow("Meta+%s", key.name) << typeOnInstall(key.key, Qt::MetaModifier);
        }
    }

    void otherInputIsNoAnswer()
    {
        QFETCH(Input, input);
        const ShownDialog dialog;
        dialog.makeReady();

        input(dialog);

        QCOMPARE(dialog.answers(), 0);
        QVERIFY(dialog.window()->isVisible());
        tap("install")(dialog);
        QCOMPARE(dialog.requested(), 1);
    }
};

DIALOG_TEST_MAIN(DialogAnswersTest)

#include "tst_dialoganswers.moc"
