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

/** The dialog for screen readers and for the keyboard. */
class DialogAccessibilityTest : public DialogTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QAccessible::setActive(true); }

    void dialogHasRoleNameAndDescription()
    {
        const ShownDialog dialog;
        const QAccessibleInterface *page = interfaceOf(dialog.item("page"));

        QCOMPARE(page->role(), QAccessible::Dialog);
        QCOMPARE(page->text(QAccessible::Name), QStringLiteral("Install this app?"));
        QCOMPARE(page->text(QAccessible::Description),
                 QStringLiteral("This app does not come from the store. Install it only if you trust its source.\n"
                                "lighthouse-tides 2.4.1\n"
                                "Tide tables and weather for small boats"));
    }

    void namesAreTranslated()
    {
        setLocale(QLocale(QLocale::German));
        const ShownDialog dialog;

        QCOMPARE(interfaceOf(dialog.item("page"))->text(QAccessible::Name), QStringLiteral("Diese App installieren?"));
        QCOMPARE(interfaceOf(dialog.item("cancel"))->text(QAccessible::Name), QStringLiteral("Abbrechen"));
        QCOMPARE(interfaceOf(dialog.item("file"))->text(QAccessible::Description),
                 QStringLiteral("Zeigt den vollständigen Pfad der Paketdatei an"));
    }

    void textsAreRead()
    {
        const ShownDialog dialog;

        const PackageTexts *texts = PackageTexts::ordinary();
        QStringList read;
        appendTexts(interfaceOf(dialog.window()), &read);

        QCOMPARE(read,
                 QStringList({QStringLiteral("Install this app?"),
                              QStringLiteral("This app does not come from the store. "
                                             "Install it only if you trust its source."),
                              texts->name, texts->version, texts->summary}));
    }

    void actionsHaveRoleAndName()
    {
        const ShownDialog dialog;

        QCOMPARE(interfaceOf(dialog.item("cancel"))->role(), QAccessible::Button);
        QCOMPARE(interfaceOf(dialog.item("cancel"))->text(QAccessible::Name), QStringLiteral("Cancel"));
        QCOMPARE(interfaceOf(dialog.item("install"))->role(), QAccessible::Button);
        QCOMPARE(interfaceOf(dialog.item("install"))->text(QAccessible::Name), QStringLiteral("Install"));
    }

    void actionsCanBePressed_data()
    {
        QTest::addColumn<QByteArray>("action");
        QTest::addColumn<bool>("accepts");

        QTest::newRow("cancel") << QByteArray("cancel") << false;
        QTest::newRow("install") << QByteArray("install") << true;
    }

    void actionsCanBePressed()
    {
        QFETCH(QByteArray, action);
        QFETCH(bool, accepts);
        const ShownDialog dialog;

        press(interfaceOf(dialog.item(action.constData())));
        press(interfaceOf(dialog.item("cancel")));
        press(interfaceOf(dialog.item("install")));

        QCOMPARE(dialog.requested(), accepts ? 1 : 0);
        QCOMPARE(dialog.dismissed(), accepts ? 0 : 1);
    }

    void pathIsReadInFullAndOpens()
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
        QCOMPARE(dialog.answers(), 0);
    }

    void cancelHasTheFocus()
    {
        const ShownDialog dialog;

        QCOMPARE(dialog.window()->activeFocusItem(), dialog.item("cancel"));
        QCOMPARE(dialog.window()->contentItem()->nextItemInFocusChain(), dialog.item("cancel"));
        QVERIFY(interfaceOf(dialog.item("cancel"))->state().focused);
        QVERIFY(!interfaceOf(dialog.item("install"))->state().focused);
        for (const char *item : {"cancel", "install", "file"}) {
            QVERIFY(interfaceOf(dialog.item(item))->state().focusable);
        }
    }

    void tabMovesFocus()
    {
        const ShownDialog dialog;

        for (const char *next : {"install", "file", "cancel"}) {
            QTest::keyClick(dialog.window(), Qt::Key_Tab);
            QCOMPARE(dialog.window()->activeFocusItem(), dialog.item(next));
        }
        for (const char *previous : {"file", "install", "cancel"}) {
            QTest::keyClick(dialog.window(), Qt::Key_Backtab, Qt::ShiftModifier);
            QCOMPARE(dialog.window()->activeFocusItem(), dialog.item(previous));
        }
    }

    void arrowsMoveFocusBetweenActions_data()
    {
        QTest::addColumn<QLocale>("locale");

        QTest::newRow("left to right") << QLocale::c();
        QTest::newRow("right to left") << QLocale(QLocale::Arabic);
    }

    void arrowsMoveFocusBetweenActions()
    {
        QFETCH(QLocale, locale);
        setLocale(locale);
        const ShownDialog dialog;

        for (const Qt::Key key : {Qt::Key_Right, Qt::Key_Left}) {
            for (const char *next : {"install", "cancel"}) {
                QTest::keyClick(dialog.window(), key);
                QCOMPARE(dialog.window()->activeFocusItem(), dialog.item(next));
            }
        }
    }
};

DIALOG_TEST_MAIN(DialogAccessibilityTest)

#include "tst_dialogaccessibility.moc"
