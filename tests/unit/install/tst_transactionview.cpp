// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "transactionview.h"

#include "installationfixture.h"
#include "rpminfo.h"
#include "testrunner.h"

#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQmlPropertyMap>

namespace {

const QString Begin = "notification_begin_req"_s;
const QString End = "notification_end_req"_s;

const QString Plain = "plain"_s;
const QString NeedConfirm = "needConfirm"_s;
const QString Shown = "dialog shown full screen"_s;
const QString Confirmed = "installationConfirmed, window there"_s;
const QString Cancelled = "installationCancelled, window gone"_s;
const QString Destroyed = "dialog destroyed"_s;

const QString NoDialog = "warning: Problems creating dialog component (%1)"_s;
const QString NoWindow = "warning: Failed to cast component to window (%1)"_s;
const QString Dialog = "file:///usr/share/velmora-installationhandler//SideloadDialog.qml:"_s;

// The test keeps the object, and deletes it in the end.
const QByteArray NotAWindow = R"(
import QtQml 2.15
QtObject {
    Component.onCompleted: survivor.object = this
    Component.onDestruction: console.warn("destroyed")
}
)";

}

/** The appearance of the dialog, the answers of the user and of the display, and dialogs that cannot be loaded. */
class TransactionViewTest : public InstallationFixture
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        setUp();
        m_package.readPackage(packageFile(Plain));
        m_view = std::make_unique<TransactionView>(nullptr);
        use(engine());
        connect(m_view.get(), &TransactionView::needConfirm, this, [this] { note(NeedConfirm); });
        connect(m_view.get(), &TransactionView::installationConfirmed, this,
                [this] { note("installationConfirmed"_s + presence()); });
        connect(m_view.get(), &TransactionView::installationCancelled, this,
                [this] { note("installationCancelled"_s + presence()); });
        settle();
        m_journal.clear();
    }

    void cleanup()
    {
        m_view.reset();
        tearDown();
    }

    void hasItsMethodsInOrder()
    {
        QCOMPARE(methodsOf(TransactionView::staticMetaObject),
                 QStringList({"signal needConfirm()"_s, "signal installationConfirmed()"_s,
                              "signal installationCancelled()"_s, "private slot handleDialogDismissed()"_s,
                              "private slot displayStateChanged()"_s, "private slot handleInstallationConfirmed()"_s}));
    }

    void isIdleAtFirst()
    {
        QVERIFY(!m_view->hasWindow());
        QVERIFY(!m_view->isVisible());
        QVERIFY(settle());
        QCOMPARE(entries(), QStringList());
    }

    void belongsToItsParent()
    {
        QObject parent;
        QCOMPARE((new TransactionView(&parent))->parent(), &parent);
    }

    // The dialog waits for MCE's answer, although it says nothing.
    void showsTheDialogFullScreenAfterAskingMce()
    {
        m_peer->answer(Begin, PeerAnswer::values().after([this] { note("answer"_s + presence()); }));
        m_view->showConfirmation(&m_package);

        QVERIFY(m_view->hasWindow());
        QVERIFY(m_view->isVisible());
        QCOMPARE(entries(), QStringList({NeedConfirm, beginRequest(Plain), "answer, window there"_s, Shown}));
        // Each dialog releases the component that it was made from.
        QVERIFY(TestDialog::window()->findChild<QQmlComponent *>());
    }

    void publishesThePackageBeforeAnythingElse()
    {
        QObject *published = nullptr;
        bool hadWindow = true;
        connect(m_view.get(), &TransactionView::needConfirm, this, [&] {
            published = qvariant_cast<QObject *>(context()->contextProperty("rpmInfo"_s));
            hadWindow = m_view->hasWindow();
        });
        m_view->showConfirmation(&m_package);

        QCOMPARE(published, &m_package);
        QVERIFY(!hadWindow);
    }

    void showsThePackageToQml()
    {
        QVERIFY(show());
        QCOMPARE(TestDialog::window()->property("shown").toString(),
                 "plain|1.2.3|A plain package|"_s + packageFile(Plain));
    }

    void showsThatNothingCouldBeRead()
    {
        RpmInfo nothing;
        nothing.readPackage("/absent.rpm"_s);
        m_view->showConfirmation(&nothing);

        QCOMPARE(TestDialog::window()->property("shown").toString(), "|||/absent.rpm"_s);
        QCOMPARE(entries(), QStringList({NeedConfirm, beginRequest(QString()), Shown}));

        // The dialog goes before the package that it shows.
        m_view->closeWindow();
        TestDialog::deleteScheduled();
    }

    void doesWithoutMce_data()
    {
        QTest::addColumn<PeerAnswer>("begin");
        QTest::addColumn<PeerAnswer>("end");
        const auto row = [](const char *name, const PeerAnswer &begin, const PeerAnswer &end) {
            QTest::newRow(name) << begin << end;
        };
        const PeerAnswer refusal = PeerAnswer::error("com.nokia.mce.Error.Refused", "no");
        const PeerAnswer noMethod = PeerAnswer::error("org.freedesktop.DBus.Error.UnknownMethod");
        row("refuses", refusal, refusal);
        row("knows no such method", noMethod, noMethod);
        row("dies when the dialog comes", PeerAnswer::death(), PeerAnswer::values());
        row("dies when the dialog goes", PeerAnswer::values(), PeerAnswer::death());
        row("answers something", PeerAnswer::values("('yes', 5, <true>)"), PeerAnswer::values("(@a{sv} {},)"));
    }

    void doesWithoutMce()
    {
        QFETCH(PeerAnswer, begin);
        QFETCH(PeerAnswer, end);
        m_peer->answer(Begin, begin);
        m_peer->answer(End, end);
        m_peer->overlook(End);

        m_view->showConfirmation(&m_package);
        QVERIFY(m_view->isVisible());
        TestDialog::dismiss(TestDialog::window());
        QCOMPARE(entries(), QStringList({NeedConfirm, beginRequest(Plain), Shown, Cancelled}));
    }

    void doesWithoutAnyMce()
    {
        m_peer.reset();
        m_view->showConfirmation(&m_package);
        QVERIFY(m_view->isVisible());
        TestDialog::confirm(TestDialog::window());
        QCOMPARE(entries(), QStringList({NeedConfirm, Shown, Confirmed}));
    }

    void knowsWhetherTheDialogIsOnScreen()
    {
        QVERIFY(show());
        QQuickWindow *window = TestDialog::window();
        window->hide();
        QVERIFY(m_view->hasWindow());
        QVERIFY(!m_view->isVisible());
        window->show();
        QVERIFY(m_view->isVisible());
    }

    void closesWithoutAnswer()
    {
        QVERIFY(show());
        m_view->closeWindow();
        QVERIFY(!m_view->hasWindow());
        QVERIFY(!m_view->isVisible());
        QVERIFY(TestDialog::window());
        m_view->closeWindow();
        TestDialog::deleteScheduled();

        QVERIFY(settle());
        QCOMPARE(entries(), QStringList(Destroyed));
    }

    void goesSilently()
    {
        QVERIFY(show());
        m_view.reset();
        QVERIFY(TestDialog::window());
        QVERIFY(settle());
        QCOMPARE(entries(), QStringList());

        TestDialog::deleteScheduled();
        QCOMPARE(entries(), QStringList(Destroyed));
    }

    // Known behaviour 62.
    void endsWithTheAnswer_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<QStringList>("expected");
        const QString answered = "answer, window there"_s;
        QTest::newRow("confirmed") << QByteArray("confirm")
                                   << QStringList{Confirmed, endRequest(Plain, 3000000), answered};
        QTest::newRow("dismissed") << QByteArray("dismiss")
                                   << QStringList{endRequest(Plain, 1000000), answered, Cancelled};
        QTest::newRow("display off") << QByteArray("off") << QStringList{endRequest(Plain, 0), answered, Cancelled};
    }

    void endsWithTheAnswer()
    {
        QFETCH(QByteArray, answer);
        QFETCH(QStringList, expected);
        QVERIFY(show());
        m_peer->answer(End, PeerAnswer::values().after([this] { note("answer"_s + presence()); }));
        if (answer == "off") {
            QVERIFY(setDisplay("dimmed"));
            QVERIFY(setDisplay("off"));
        } else {
            answer == "confirm" ? TestDialog::confirm(TestDialog::window()) : TestDialog::dismiss(TestDialog::window());
        }

        QVERIFY(!m_view->hasWindow());
        QVERIFY(!m_view->isVisible());
        TestDialog::deleteScheduled();
        QCOMPARE(entries(), expected + QStringList(Destroyed));
    }

    void staysWhenTheDisplayIsOtherwise_data()
    {
        QTest::addColumn<QByteArrayList>("before");
        QTest::addColumn<QByteArrayList>("states");
        QTest::newRow("dimmed") << QByteArrayList() << QByteArrayList{"dimmed"};
        QTest::newRow("on again") << QByteArrayList() << QByteArrayList{"dimmed", "on"};
        QTest::newRow("to and fro") << QByteArrayList() << QByteArrayList{"dimmed", "on", "dimmed", "on"};
        QTest::newRow("off before") << QByteArrayList{"off", "on", "off"} << QByteArrayList{"on"};
    }

    void staysWhenTheDisplayIsOtherwise()
    {
        QFETCH(QByteArrayList, before);
        QFETCH(QByteArrayList, states);
        for (const QByteArray &state : qAsConst(before)) {
            QVERIFY(setDisplay(state));
        }
        QCOMPARE(entries(), QStringList());
        QVERIFY(show());
        QVERIFY(settle());
        for (const QByteArray &state : qAsConst(states)) {
            QVERIFY(setDisplay(state));
        }
        QVERIFY(m_view->isVisible());
        QCOMPARE(entries(), QStringList());

        // It has been listening all the time.
        QVERIFY(setDisplay("off"));
        QCOMPARE(withoutDeletion(), QStringList({endRequest(Plain, 0), Cancelled}));
    }

    void ignoresTheDisplayAfterTheAnswer()
    {
        QVERIFY(show());
        TestDialog::confirm(TestDialog::window());
        m_journal.clear();
        QVERIFY(setDisplay("off"));
        QCOMPARE(withoutDeletion(), QStringList());
    }

    void remembersTheNameOfTheShowing()
    {
        QVERIFY(show());
        m_package.readPackage(packageFile("translated"_s));
        TestDialog::confirm(TestDialog::window());
        QCOMPARE(entries(), QStringList({readLine("translated"_s), Confirmed, endRequest(Plain, 3000000)}));
    }

    void canBeAskedAgain()
    {
        QVERIFY(show());
        TestDialog::dismiss(TestDialog::window());
        TestDialog::deleteScheduled();
        QVERIFY(show());
        TestDialog::confirm(TestDialog::window());
        QCOMPARE(entries(), QStringList({Confirmed, endRequest(Plain, 3000000)}));
    }

    // The answers don't look whether a window is there. Known behaviour 63.
    void handlesASecondAnswer_data()
    {
        const QStringList confirmed{Confirmed, endRequest(Plain, 3000000)};
        const QStringList confirmedLate{"installationConfirmed, window gone"_s, endRequest(Plain, 3000000)};
        const QStringList dismissed{endRequest(Plain, 1000000), Cancelled};

        QTest::addColumn<bool>("firstConfirms");
        QTest::addColumn<bool>("secondConfirms");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("dismissed after confirmation") << true << false << confirmed + dismissed;
        QTest::newRow("confirmed after refusal") << false << true << dismissed + confirmedLate;
        QTest::newRow("confirmed twice") << true << true << confirmed + confirmedLate;
        QTest::newRow("dismissed twice") << false << false << dismissed + dismissed;
    }

    void handlesASecondAnswer()
    {
        QFETCH(bool, firstConfirms);
        QFETCH(bool, secondConfirms);
        QFETCH(QStringList, expected);
        QVERIFY(show());
        QQuickWindow *window = TestDialog::window();
        for (const bool confirms : {firstConfirms, secondConfirms}) {
            confirms ? TestDialog::confirm(window) : TestDialog::dismiss(window);
        }
        QCOMPARE(entries(), expected);

        TestDialog::deleteScheduled();
        QCOMPARE(entries(), expected + QStringList(Destroyed));
    }

    // Known behaviour 57, 58.
    void leavesTheFirstOfTwoDialogsAlive()
    {
        QVERIFY(show());
        QQuickWindow *first = TestDialog::window();
        m_view->showConfirmation(&m_package);
        TestDialog::deleteScheduled();

        QCOMPARE(TestDialog::windows().size(), 2);
        QVERIFY(first->isVisible());
        QCOMPARE(entries(), QStringList({NeedConfirm, beginRequest(Plain), Shown}));

        TestDialog::dismiss(TestDialog::windows().last());
        TestDialog::deleteScheduled();
        QCOMPARE(TestDialog::windows(), QList<QQuickWindow *>{first});
        QVERIFY(first->isVisible());
        QVERIFY(!m_view->hasWindow());
    }

    // An answer belongs to no window in particular. Known behaviour 58.
    void answersOfTheFirstDialogEndTheSecond()
    {
        QVERIFY(show());
        QQuickWindow *first = TestDialog::window();
        m_view->showConfirmation(&m_package);
        m_journal.clear();
        TestDialog::confirm(first);
        TestDialog::deleteScheduled();

        QCOMPARE(entries(), QStringList({Confirmed, endRequest(Plain, 3000000), Destroyed}));
        QCOMPARE(TestDialog::window(), first);
    }

    // Known behaviour 52.
    void warnsWithoutDialog_data()
    {
        QTest::addColumn<bool>("hasEngine");
        QTest::addColumn<QByteArray>("qml");
        QTest::addColumn<QString>("warning");
        const auto row = [](const char *name, const QByteArray &qml, const QString &warning, const char *error) {
            QTest::newRow(name) << true << qml << warning.arg(Dialog + QString::fromUtf8(error));
        };
        QTest::newRow("no engine") << false << QByteArray() << NoDialog.arg(QString());
        row("no file", {}, NoDialog, " No such file or directory");
        row("no such property", "import QtQuick.Window 2.15\nWindow { colour: \"red\" }\n", NoDialog,
            "2:10: Cannot assign to non-existent property \"colour\"\n    Window { colour: \"red\" }\n             ^");
        row("no such module", "import Absent 1.0\nAbsent {}\n", NoDialog,
            "1:1: module \"Absent\" is not installed\n    import Absent 1.0\n    ^");
        // Such a file loads without a complaint.
        row("root cannot be created", "import QtQuick.Window 2.15\nWindow { required property int number }\n", NoWindow,
            "2:10: Required property number was not initialized\n"
            "    Window { required property int number }\n             ^");
    }

    void warnsWithoutDialog()
    {
        QFETCH(bool, hasEngine);
        QFETCH(QByteArray, qml);
        QFETCH(QString, warning);
        use(makeEngine());
        m_view->setEngine(hasEngine ? m_used : nullptr);
        qml.isEmpty() ? m_dialog->remove() : m_dialog->write(qml);
        m_view->showConfirmation(&m_package);

        QVERIFY(!m_view->hasWindow());
        QVERIFY(settle());
        QCOMPARE(entries(), QStringList({NeedConfirm, warning}));
        QCOMPARE(context()->contextProperty("rpmInfo"_s).isValid(), hasEngine);
    }

    void forgetsTheDialogForARootThatIsNoWindow_data()
    {
        QTest::addColumn<bool>("hasDialog");
        QTest::newRow("no dialog") << false;
        QTest::newRow("a dialog") << true;
    }

    // The dialog on screen is not taken away, and the other object is not deleted. Known behaviour 61.
    void forgetsTheDialogForARootThatIsNoWindow()
    {
        QFETCH(bool, hasDialog);
        QCOMPARE(hasDialog && show(), hasDialog);
        QQmlPropertyMap survivor;
        use(makeEngine());
        context()->setContextProperty("survivor"_s, &survivor);
        m_dialog->write(NotAWindow);
        m_view->showConfirmation(&m_package);
        TestDialog::deleteScheduled();

        QVERIFY(!m_view->hasWindow());
        QVERIFY(!m_view->isVisible());
        QCOMPARE(TestDialog::window() && TestDialog::window()->isVisible(), hasDialog);
        QVERIFY(settle());
        QCOMPARE(entries(), QStringList({NeedConfirm, NoWindow.arg(QString())}));
        const std::unique_ptr<QObject> object(survivor.value("object"_s).value<QObject *>());
        QVERIFY(object);
    }

    void keepsTheDialogWhenTheNextCannotBeLoaded()
    {
        use(makeEngine());
        QVERIFY(show());
        m_dialog->remove();
        use(makeEngine());
        m_view->showConfirmation(&m_package);
        QVERIFY(m_view->isVisible());
        QCOMPARE(entries().size(), 2);

        m_journal.clear();
        TestDialog::dismiss(TestDialog::window());
        QCOMPARE(entries(), QStringList({endRequest(Plain, 1000000), Cancelled}));
    }

    void recovers()
    {
        use(makeEngine());
        m_dialog->remove();
        m_view->showConfirmation(&m_package);
        m_dialog.emplace();
        use(makeEngine());

        QVERIFY(show());
        TestDialog::confirm(TestDialog::window());
        QCOMPARE(entries().size(), 2);
    }

private:
    /** Gives the controller an engine. */
    void use(QQmlEngine *engine)
    {
        m_used = engine;
        m_view->setEngine(engine);
    }

    QQmlContext *context() const { return m_used->rootContext(); }

    /** Shows the dialog and clears the journal. False when there is no dialog. */
    bool show()
    {
        m_view->showConfirmation(&m_package);
        m_journal.clear();
        return m_view->isVisible();
    }

    /** MCE announces a state, and the controller has heard of it. */
    bool setDisplay(const QByteArray &state)
    {
        m_peer->emitSignal("/com/nokia/mce/signal"_s, "com.nokia.mce.signal"_s, "display_status_ind"_s,
                           "('" + state + "',)");
        return settle();
    }

    /** ", window there" or ", window gone", by the controller. */
    QString presence() const { return m_view->hasWindow() ? ", window there"_s : ", window gone"_s; }

    /** The entries without the deletion of the dialog, which comes some time after the answer. */
    QStringList withoutDeletion() const
    {
        QStringList happened = entries();
        happened.removeAll(Destroyed);
        return happened;
    }

    RpmInfo m_package;
    std::unique_ptr<TransactionView> m_view;
    QQmlEngine *m_used = nullptr;
};

VELMORA_TEST(TransactionViewTest, Device, Gui)

#include "tst_transactionview.moc"
