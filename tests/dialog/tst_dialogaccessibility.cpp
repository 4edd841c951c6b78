// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogtest.h"
#include "showndialog.h"

#include <QAccessible>

namespace {

QAccessibleInterface *interfaceOf(QObject *object)
{
    QAccessibleInterface *found = QAccessible::queryAccessibleInterface(object);
    if (!found) {
        qFatal("Screen readers cannot see %s", object->metaObject()->className());
    }
    return found;
}

void appendTexts(const QAccessibleInterface *parent, QStringList *texts)
{
    for (int i = 0; i < parent->childCount(); ++i) {
        const QAccessibleInterface *child = parent->child(i);
        if (child->role() == QAccessible::StaticText) {
            texts->append(child->text(QAccessible::Name));
        }
        appendTexts(child, texts);
    }
}

void press(QAccessibleInterface *interface)
{
    interface->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
}

}

/** What a screen reader finds in the dialog, and what it can do with it. */
class DialogAccessibilityTest : public DialogTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void tellsWhatItIs();
    void speaksTheUsersLanguage();
    void textsAreRead();
    void actionsHaveRoleAndName();
    void actionsCanBePressed_data();
    void actionsCanBePressed();
    void pathIsReadWholeAndOpens();
    void focusIsTold();
};

void DialogAccessibilityTest::initTestCase()
{
    QAccessible::setActive(true);
}

void DialogAccessibilityTest::tellsWhatItIs()
{
    PackageTexts texts;
    const ShownDialog dialog(&texts);
    const QAccessibleInterface *page = interfaceOf(dialog.item("page"));

    QCOMPARE(page->role(), QAccessible::Dialog);
    QCOMPARE(page->text(QAccessible::Name), QStringLiteral("Install this app?"));
    QCOMPARE(page->text(QAccessible::Description),
             QStringLiteral("This app does not come from the store. Install it only if you trust its source.\n"
                            "lighthouse-tides 2.4.1\n"
                            "Tide tables and weather for small boats"));
}

void DialogAccessibilityTest::speaksTheUsersLanguage()
{
    speak(QLocale(QLocale::German));
    PackageTexts texts;
    const ShownDialog dialog(&texts);

    QCOMPARE(interfaceOf(dialog.item("page"))->text(QAccessible::Name), QStringLiteral("Diese App installieren?"));
    QCOMPARE(interfaceOf(dialog.item("cancel"))->text(QAccessible::Name), QStringLiteral("Abbrechen"));
    QCOMPARE(interfaceOf(dialog.item("file"))->text(QAccessible::Description),
             QStringLiteral("Zeigt den vollständigen Pfad der Paketdatei an"));
}

void DialogAccessibilityTest::textsAreRead()
{
    PackageTexts texts;
    const ShownDialog dialog(&texts);

    QStringList read;
    appendTexts(interfaceOf(dialog.window()), &read);

    QCOMPARE(read,
             QStringList({QStringLiteral("Install this app?"),
                          QStringLiteral("This app does not come from the store. "
                                         "Install it only if you trust its source."),
                          texts.name, texts.version, texts.summary}));
}

void DialogAccessibilityTest::actionsHaveRoleAndName()
{
    PackageTexts texts;
    const ShownDialog dialog(&texts);

    QCOMPARE(interfaceOf(dialog.item("cancel"))->role(), QAccessible::Button);
    QCOMPARE(interfaceOf(dialog.item("cancel"))->text(QAccessible::Name), QStringLiteral("Cancel"));
    QCOMPARE(interfaceOf(dialog.item("install"))->role(), QAccessible::Button);
    QCOMPARE(interfaceOf(dialog.item("install"))->text(QAccessible::Name), QStringLiteral("Install"));
}

void DialogAccessibilityTest::actionsCanBePressed_data()
{
    QTest::addColumn<QByteArray>("action");
    QTest::addColumn<bool>("accepts");

    QTest::newRow("cancel") << QByteArray("cancel") << false;
    QTest::newRow("install") << QByteArray("install") << true;
}

void DialogAccessibilityTest::actionsCanBePressed()
{
    QFETCH(QByteArray, action);
    QFETCH(bool, accepts);
    PackageTexts texts;
    const ShownDialog dialog(&texts);

    press(interfaceOf(dialog.item(action.constData())));
    press(interfaceOf(dialog.item("cancel")));
    press(interfaceOf(dialog.item("install")));

    QCOMPARE(dialog.requested(), accepts ? 1 : 0);
    QCOMPARE(dialog.dismissed(), accepts ? 0 : 1);
}

void DialogAccessibilityTest::pathIsReadWholeAndOpens()
{
    PackageTexts texts;
    texts.fileName = QLatin1Char('/') + QStringLiteral("folder/").repeated(50) + QStringLiteral("package.rpm");
    const ShownDialog dialog(&texts);
    QAccessibleInterface *file = interfaceOf(dialog.item("file"));

    QCOMPARE(file->role(), QAccessible::Button);
    QCOMPARE(file->text(QAccessible::Name), texts.fileName);
    QCOMPARE(file->text(QAccessible::Description), QStringLiteral("Shows the whole path of the package file"));
    QVERIFY(dialog.item("path")->property("truncated").toBool());

    press(file);
    dialog.awaitFrame();

    QVERIFY(!dialog.item("path")->property("truncated").toBool());
    QCOMPARE(dialog.requested() + dialog.dismissed(), 0);
}

void DialogAccessibilityTest::focusIsTold()
{
    PackageTexts texts;
    const ShownDialog dialog(&texts);

    QVERIFY(interfaceOf(dialog.item("cancel"))->state().focused);
    QVERIFY(!interfaceOf(dialog.item("install"))->state().focused);
    for (const char *item : {"cancel", "install", "file"}) {
        QVERIFY(interfaceOf(dialog.item(item))->state().focusable);
    }
}

int main(int argc, char **argv)
{
    return runDialogTest<DialogAccessibilityTest>(argc, argv);
}

#include "tst_dialogaccessibility.moc"
