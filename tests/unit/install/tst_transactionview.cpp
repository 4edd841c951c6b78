// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "transactionviewscene.h"

#include "devicetest.h"

#include <QMetaMethod>
#include <QQmlContext>
#include <QQmlEngine>
#include <QThread>

namespace {

const QString Begin = QStringLiteral("notification_begin_req");
const QString End = QStringLiteral("notification_end_req");
const QString Plain = QStringLiteral("plain");

QString described(const QMetaMethod &method)
{
    const QString signature = QString::fromLatin1(method.methodSignature());
    if (method.methodType() == QMetaMethod::Signal) {
        return QStringLiteral("signal ") + signature;
    }
    return (method.access() == QMetaMethod::Private ? QStringLiteral("private ") : QStringLiteral("open ")) + signature;
}

}

/** The dialog comes, and goes without an answer. */
class TransactionViewTest : public TransactionViewScene
{
    Q_OBJECT

private Q_SLOTS:
    void init() { setUpView(); }
    void cleanup() { tearDownView(); }

    void hasItsMethodsInOrder();
    void isIdleAtFirst();
    void belongsToItsParent();
    void showsTheDialogFullScreenAfterAskingMce();
    void publishesThePackageBeforeAnythingElse();
    void showsThePackageToQml();
    void showsThatNothingCouldBeRead();
    void waitsForMce();
    void doesWithoutMce_data();
    void doesWithoutMce();
    void doesWithoutAnyMce();
    void knowsWhetherTheDialogIsOnScreen();
    void closesWithoutAnswer();
    void goesSilently();
};

void TransactionViewTest::hasItsMethodsInOrder()
{
    const QMetaObject &meta = TransactionView::staticMetaObject;
    QStringList methods;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index) {
        methods.append(described(meta.method(index)));
    }
    QCOMPARE(methods,
             QStringList({
                     QStringLiteral("signal needConfirm()"),
                     QStringLiteral("signal installationConfirmed()"),
                     QStringLiteral("signal installationCancelled()"),
                     QStringLiteral("private handleDialogDismissed()"),
                     QStringLiteral("private displayStateChanged()"),
                     QStringLiteral("private handleInstallationConfirmed()"),
             }));
}

void TransactionViewTest::isIdleAtFirst()
{
    QVERIFY(!m_view->hasWindow());
    QVERIFY(!m_view->isVisible());
    QVERIFY(settle());
    QCOMPARE(entries(), QStringList());
}

void TransactionViewTest::belongsToItsParent()
{
    QObject parent;
    const auto child = new TransactionView(&parent);
    QCOMPARE(child->parent(), &parent);
}

void TransactionViewTest::showsTheDialogFullScreenAfterAskingMce()
{
    m_view->showConfirmation(&m_package);

    QVERIFY(m_view->hasWindow());
    QVERIFY(m_view->isVisible());
    QCOMPARE(entries(),
             QStringList(
                     {QStringLiteral("needConfirm"), beginRequest(Plain), QStringLiteral("dialog shown full screen")}));
}

void TransactionViewTest::publishesThePackageBeforeAnythingElse()
{
    QObject *published = nullptr;
    bool hadWindow = true;
    connect(m_view.get(), &TransactionView::needConfirm, this, [&] {
        published = qvariant_cast<QObject *>(context()->contextProperty(QStringLiteral("rpmInfo")));
        hadWindow = m_view->hasWindow();
    });
    m_view->showConfirmation(&m_package);

    QCOMPARE(published, &m_package);
    QVERIFY(!hadWindow);
}

void TransactionViewTest::showsThePackageToQml()
{
    QVERIFY(show());
    QCOMPARE(TestDialog::window()->property("shown").toString(),
             QStringLiteral("plain|1.2.3|A plain package|") + packageFile(Plain));
}

void TransactionViewTest::showsThatNothingCouldBeRead()
{
    RpmInfo nothing;
    nothing.readPackage(QStringLiteral("/absent.rpm"));
    m_view->showConfirmation(&nothing);

    QCOMPARE(TestDialog::window()->property("shown").toString(), QStringLiteral("|||/absent.rpm"));
    QCOMPARE(entries(),
             QStringList({QStringLiteral("needConfirm"), beginRequest(QString()),
                          QStringLiteral("dialog shown full screen")}));

    // Before the package that it shows.
    m_view->closeWindow();
    TestDialog::deleteScheduled();
}

// MCE's answer is waited for, although it says nothing.
void TransactionViewTest::waitsForMce()
{
    const PeerAnswer late = PeerAnswer::values().after([this] {
        QThread::msleep(50);
        note(QStringLiteral("answer") + presence());
    });
    m_peer->answer(Begin, late);
    m_peer->answer(End, late);

    m_view->showConfirmation(&m_package);
    TestDialog::dismiss(TestDialog::window());

    QCOMPARE(entries(),
             QStringList({QStringLiteral("needConfirm"), beginRequest(Plain), QStringLiteral("answer, window there"),
                          QStringLiteral("dialog shown full screen"), endRequest(Plain, 1000000),
                          QStringLiteral("answer, window there"),
                          QStringLiteral("installationCancelled, window gone")}));
}

void TransactionViewTest::doesWithoutMce_data()
{
    const PeerAnswer refusal = PeerAnswer::error("com.nokia.mce.Error.Refused", "no");

    QTest::addColumn<PeerAnswer>("begin");
    QTest::addColumn<PeerAnswer>("end");
    QTest::newRow("refuses") << refusal << refusal;
    QTest::newRow("knows no such method") << PeerAnswer::error("org.freedesktop.DBus.Error.UnknownMethod")
                                          << PeerAnswer::error("org.freedesktop.DBus.Error.UnknownMethod");
    QTest::newRow("dies when the dialog comes") << PeerAnswer::death() << PeerAnswer::values();
    QTest::newRow("dies when the dialog goes") << PeerAnswer::values() << PeerAnswer::death();
    QTest::newRow("answers something") << PeerAnswer::values("('yes', 5, <true>)")
                                       << PeerAnswer::values("(@a{sv} {},)");
}

void TransactionViewTest::doesWithoutMce()
{
    QFETCH(PeerAnswer, begin);
    QFETCH(PeerAnswer, end);
    m_peer->answer(Begin, begin);
    m_peer->answer(End, end);
    m_peer->overlook(End);

    m_view->showConfirmation(&m_package);
    QVERIFY(m_view->isVisible());
    TestDialog::dismiss(TestDialog::window());

    QCOMPARE(
            entries(),
            QStringList({QStringLiteral("needConfirm"), beginRequest(Plain), QStringLiteral("dialog shown full screen"),
                         QStringLiteral("installationCancelled, window gone")}));
}

void TransactionViewTest::doesWithoutAnyMce()
{
    m_peer.reset();
    m_view->showConfirmation(&m_package);
    QVERIFY(m_view->isVisible());
    TestDialog::confirm(TestDialog::window());

    QCOMPARE(entries(),
             QStringList({QStringLiteral("needConfirm"), QStringLiteral("dialog shown full screen"),
                          QStringLiteral("installationConfirmed, window there")}));
}

void TransactionViewTest::knowsWhetherTheDialogIsOnScreen()
{
    QVERIFY(show());
    QQuickWindow *window = TestDialog::window();
    window->hide();
    QVERIFY(m_view->hasWindow());
    QVERIFY(!m_view->isVisible());
    window->show();
    QVERIFY(m_view->isVisible());
}

void TransactionViewTest::closesWithoutAnswer()
{
    QVERIFY(show());
    m_view->closeWindow();
    QVERIFY(!m_view->hasWindow());
    QVERIFY(!m_view->isVisible());
    QVERIFY(TestDialog::window());
    m_view->closeWindow();
    TestDialog::deleteScheduled();

    QVERIFY(settle());
    QCOMPARE(entries(), QStringList(QStringLiteral("dialog destroyed")));
}

void TransactionViewTest::goesSilently()
{
    QVERIFY(show());
    m_view.reset();
    QVERIFY(TestDialog::window());
    QVERIFY(settle());
    QCOMPARE(entries(), QStringList());

    TestDialog::deleteScheduled();
    QCOMPARE(entries(), QStringList(QStringLiteral("dialog destroyed")));
}

int main(int argc, char **argv)
{
    return runOnDevice<TransactionViewTest>(argc, argv);
}

#include "tst_transactionview.moc"
