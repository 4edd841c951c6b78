// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "transactionviewscene.h"

#include "devicetest.h"

#include <QQmlContext>

namespace {

const QString NeedConfirm = QStringLiteral("needConfirm");
const QString NoWindow = QStringLiteral("warning: Failed to cast component to window ()");

const QByteArray NotAWindow = R"(
import QtQml 2.15
QtObject {
    objectName: "left alive"
    Component.onCompleted: survivor.note(this)
    Component.onDestruction: console.warn("destroyed")
}
)";

}

/** Keeps hold of an object that QML makes, so that somebody deletes it in the end. */
class Survivor : public QObject
{
    Q_OBJECT

public:
    Q_INVOKABLE void note(QObject *object) { m_object.reset(object); }
    QString name() const { return m_object ? m_object->objectName() : QString(); }

private:
    std::unique_ptr<QObject> m_object;
};

/** The dialog cannot be had: a warning, and nobody is told. */
class TransactionViewFailuresTest : public TransactionViewScene
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { tearDownView(); }

    void qmlMissing();
    void qmlBroken_data();
    void qmlBroken();
    void noEngine();
    void publishesNothingWithoutEngine();
    void rootIsNoWindow();
    void rootCannotBeCreated();
    void keepsTheDialogWhenTheNextCannotBeLoaded();
    void losesTheDialogWhenTheNextIsNoWindow();
    void recovers();

private:
    void letSurvive(Survivor *survivor) { context()->setContextProperty(QStringLiteral("survivor"), survivor); }
};

// Each test has another dialog.
void TransactionViewFailuresTest::init()
{
    setUpView();
    use(makeEngine());
}

void TransactionViewFailuresTest::qmlMissing()
{
    m_dialog->remove();
    m_view->showConfirmation(&m_package);

    QVERIFY(!m_view->hasWindow());
    QVERIFY(settle());
    QCOMPARE(entries(),
             QStringList({
                     NeedConfirm,
                     QStringLiteral("warning: Problems creating dialog component "
                                    "(file:///usr/share/velmora-installationhandler//SideloadDialog.qml: "
                                    "No such file or directory)"),
             }));
}

void TransactionViewFailuresTest::qmlBroken_data()
{
    QTest::addColumn<QByteArray>("qml");
    QTest::addColumn<QString>("error");
    QTest::newRow("no such property")
            << QByteArrayLiteral("import QtQuick.Window 2.15\nWindow { colour: \"red\" }\n")
            << QStringLiteral("SideloadDialog.qml:2:10: Cannot assign to non-existent property \"colour\"\n"
                              "    Window { colour: \"red\" }\n             ^");
    QTest::newRow("no such module") << QByteArrayLiteral("import Absent 1.0\nAbsent {}\n")
                                    << QStringLiteral("SideloadDialog.qml:1:1: module \"Absent\" is not installed\n"
                                                      "    import Absent 1.0\n    ^");
}

void TransactionViewFailuresTest::qmlBroken()
{
    QFETCH(QByteArray, qml);
    QFETCH(QString, error);
    m_dialog->write(qml);
    m_view->showConfirmation(&m_package);

    QVERIFY(!m_view->hasWindow());
    QVERIFY(settle());
    QCOMPARE(entries(),
             QStringList({
                     NeedConfirm,
                     QStringLiteral("warning: Problems creating dialog component "
                                    "(file:///usr/share/velmora-installationhandler//%1)")
                             .arg(error),
             }));
}

void TransactionViewFailuresTest::noEngine()
{
    m_view->setEngine(nullptr);
    m_view->showConfirmation(&m_package);

    QVERIFY(!m_view->hasWindow());
    QVERIFY(settle());
    QCOMPARE(entries(), QStringList({NeedConfirm, QStringLiteral("warning: Problems creating dialog component ()")}));
}

void TransactionViewFailuresTest::publishesNothingWithoutEngine()
{
    m_view->setEngine(nullptr);
    m_view->showConfirmation(&m_package);

    QVERIFY(!context()->contextProperty(QStringLiteral("rpmInfo")).isValid());
}

// Required: the object that isn't a window is left alive.
void TransactionViewFailuresTest::rootIsNoWindow()
{
    Survivor survivor;
    letSurvive(&survivor);
    m_dialog->write(NotAWindow);
    m_view->showConfirmation(&m_package);
    TestDialog::deleteScheduled();

    QVERIFY(!m_view->hasWindow());
    QVERIFY(settle());
    QCOMPARE(entries(), QStringList({NeedConfirm, NoWindow}));
    QCOMPARE(survivor.name(), QStringLiteral("left alive"));
}

// Such a file loads without a complaint.
void TransactionViewFailuresTest::rootCannotBeCreated()
{
    m_dialog->write("import QtQuick.Window 2.15\nWindow { required property int number }\n");
    m_view->showConfirmation(&m_package);

    QVERIFY(!m_view->hasWindow());
    QVERIFY(settle());
    QCOMPARE(entries(),
             QStringList({
                     NeedConfirm,
                     QStringLiteral("warning: Failed to cast component to window "
                                    "(file:///usr/share/velmora-installationhandler//SideloadDialog.qml:"
                                    "2:10: Required property number was not initialized\n"
                                    "    Window { required property int number }\n"
                                    "             ^)"),
             }));
}

void TransactionViewFailuresTest::keepsTheDialogWhenTheNextCannotBeLoaded()
{
    QVERIFY(show());
    m_dialog->remove();
    use(makeEngine());
    m_view->showConfirmation(&m_package);
    QVERIFY(m_view->isVisible());
    QCOMPARE(entries().size(), 2);

    m_journal.clear();
    TestDialog::dismiss(TestDialog::window());
    QCOMPARE(entries(),
             QStringList({endRequest(QStringLiteral("plain"), 1000000),
                          QStringLiteral("installationCancelled, window gone")}));
}

// Required: the window that is on screen is forgotten, not taken away.
void TransactionViewFailuresTest::losesTheDialogWhenTheNextIsNoWindow()
{
    QVERIFY(show());
    m_dialog->write(NotAWindow);
    use(makeEngine());
    Survivor survivor;
    letSurvive(&survivor);
    m_view->showConfirmation(&m_package);
    TestDialog::deleteScheduled();

    QVERIFY(!m_view->hasWindow());
    QVERIFY(!m_view->isVisible());
    QVERIFY(TestDialog::window()->isVisible());
    QVERIFY(settle());
    QCOMPARE(entries(), QStringList({NeedConfirm, NoWindow}));
}

void TransactionViewFailuresTest::recovers()
{
    m_dialog->remove();
    m_view->showConfirmation(&m_package);
    m_dialog.reset();
    m_dialog.emplace();
    use(makeEngine());

    QVERIFY(show());
    TestDialog::confirm(TestDialog::window());
    QCOMPARE(entries().size(), 2);
}

int main(int argc, char **argv)
{
    return runOnDevice<TransactionViewFailuresTest>(argc, argv);
}

#include "tst_transactionviewfailures.moc"
