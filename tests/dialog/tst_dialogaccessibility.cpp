// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "dialogtest.h"
#include "showndialog.h"

#include <QAccessible>

namespace {

const QString Warning =
        QStringLiteral("This app is not from the app store and has not been checked. It could harm your "
                       "device or data. Install it only if you trust where you got it.");

QAccessibleInterface *interfaceOf(QObject *object)
{
    QAccessibleInterface *found = QAccessible::queryAccessibleInterface(object);
    if (!found) {
        qFatal("Screen readers cannot see %s", object->metaObject()->className());
    }
    return found;
}

/** Appends the names of everything below an object, in the order in which they are read. */
void appendNames(const QAccessibleInterface *parent, QStringList *names)
{
    for (int i = 0; i < parent->childCount(); ++i) {
        const QAccessibleInterface *child = parent->child(i);
        names->append(child->text(QAccessible::Name));
        appendNames(child, names);
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
        QCOMPARE(page->text(QAccessible::Name), QStringLiteral("lighthouse-tides 2.4.1"));
        QCOMPARE(page->text(QAccessible::Description), Warning);
    }

    void dialogIsNamedByWhatIsKnown_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("version");
        QTest::addColumn<QString>("fileName");
        QTest::addColumn<QString>("expected");

        const QString path = QStringLiteral("/tmp/a.rpm");
        QTest::newRow("no version") << QStringLiteral("a") << QString() << path << QStringLiteral("a");
        QTest::newRow("no name") << QString() << QStringLiteral("1.0") << path << path;
        QTest::newRow("blanks") << QStringLiteral(" \u3000\u00a0") << QString() << path << path;
        QTest::newRow("blanks around") << QStringLiteral(" a ") << QStringLiteral("\n1.0\n") << path
                                       << QStringLiteral("a 1.0");
        QTest::newRow("right to left") << QStringLiteral("مرحبا") << QStringLiteral("1.0") << path
                                       << QStringLiteral("مرحبا 1.0");
        QTest::newRow("no file") << QStringLiteral("a") << QStringLiteral("1.0") << QString()
                                 << QStringLiteral("a 1.0");
        QTest::newRow("nothing") << QString() << QString() << QString() << QStringLiteral("Install this app?");
    }

    void dialogIsNamedByWhatIsKnown()
    {
        QFETCH(QString, name);
        QFETCH(QString, version);
        QFETCH(QString, fileName);
        QFETCH(QString, expected);
        PackageTexts texts;
        texts.name = name;
        texts.version = version;
        texts.fileName = fileName;

        const ShownDialog dialog(&texts);

        QCOMPARE(interfaceOf(dialog.item("page"))->text(QAccessible::Name), expected);
        QCOMPARE(dialog.item("card")->isVisible(), !fileName.isEmpty());
    }

    // The keyboard reaches only what is seen.
    void keysWorkWithoutPackage()
    {
        PackageTexts texts;
        texts.name = texts.version = texts.summary = texts.fileName = QString();
        const ShownDialog dialog(&texts);

        QCOMPARE(dialog.window()->activeFocusItem(), dialog.item("cancel"));
        for (const char *next : {"install", "cancel"}) {
            QTest::keyClick(dialog.window(), Qt::Key_Tab);
            QCOMPARE(dialog.window()->activeFocusItem(), dialog.item(next));
        }
        for (const char *previous : {"install", "cancel"}) {
            QTest::keyClick(dialog.window(), Qt::Key_Backtab, Qt::ShiftModifier);
            QCOMPARE(dialog.window()->activeFocusItem(), dialog.item(previous));
        }
        for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown}) {
            QTest::keyClick(dialog.window(), key);
            QCOMPARE(dialog.window()->activeFocusItem(), dialog.item("cancel"));
        }
        QTest::keyClick(dialog.window(), Qt::Key_Return);
        QCOMPARE(dialog.dismissed(), 1);
    }

    void namesAreTranslated()
    {
        setLocale(QLocale(QLocale::German));
        const ShownDialog dialog;

        QCOMPARE(interfaceOf(dialog.item("question"))->text(QAccessible::Name),
                 QStringLiteral("Diese App installieren?"));
        QCOMPARE(interfaceOf(dialog.item("cancel"))->text(QAccessible::Name), QStringLiteral("Abbrechen"));
    }

    // The texts come before the buttons, so that a person hears what is asked before the answers.
    void everythingIsReadInOrder()
    {
        const ShownDialog dialog;

        const PackageTexts *texts = PackageTexts::ordinary();
        QStringList read;
        appendNames(interfaceOf(dialog.item("page")), &read);

        QCOMPARE(read,
                 QStringList({QStringLiteral("Install this app?"), texts->name, QStringLiteral("Version 2.4.1"),
                              Warning, QStringLiteral("In the app's own words: ") + texts->summary, texts->fileName,
                              QStringLiteral("Cancel"), QStringLiteral("Install")}));
    }

    void questionIsTheHeading()
    {
        const ShownDialog dialog;

        QCOMPARE(interfaceOf(dialog.item("question"))->role(), QAccessible::Heading);
        for (const char *text : {"name", "version", "warning", "summary"}) {
            QCOMPARE(interfaceOf(dialog.item(text))->role(), QAccessible::StaticText);
        }
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
        QCOMPARE(file->text(QAccessible::Description), QStringLiteral("Show full path"));
        QVERIFY(dialog.property("folder", "truncated").toBool());

        press(file);
        dialog.awaitFrame();

        QCOMPARE(file->text(QAccessible::Description), QStringLiteral("Hide full path"));
        QVERIFY(!dialog.property("folder", "truncated").toBool());

        press(file);

        QCOMPARE(file->text(QAccessible::Description), QStringLiteral("Show full path"));
        QCOMPARE(dialog.answers(), 0);
    }

    void cancelHasTheFocus()
    {
        const ShownDialog dialog;

        QCOMPARE(dialog.window()->activeFocusItem(), dialog.item("cancel"));
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

    void arrowsReachThePath()
    {
        const ShownDialog dialog(PackageTexts::ordinary(), QSize(800, 1200));

        for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Down}) {
            for (const char *next : {"file", "cancel"}) {
                QTest::keyClick(dialog.window(), key);
                QCOMPARE(dialog.window()->activeFocusItem(), dialog.item(next));
            }
        }
    }

    void focusIsSeenOnceItHasMoved()
    {
        const ShownDialog dialog;
        const auto border = [&dialog](const char *id) {
            return dialog.property(id, "border").value<QObject *>()->property("width").toReal();
        };
        const qreal thin = border("cancel");
        QCOMPARE(border("install"), thin);
        QCOMPARE(border("file"), 0.0);

        QTest::keyClick(dialog.window(), Qt::Key_Tab);
        QVERIFY(border("install") > thin);
        QCOMPARE(border("cancel"), thin);
        QTest::keyClick(dialog.window(), Qt::Key_Tab);
        QVERIFY(border("file") > thin);
        QCOMPARE(border("install"), thin);
        QTest::keyClick(dialog.window(), Qt::Key_Tab);
        QVERIFY(border("cancel") > thin);
        QCOMPARE(border("file"), 0.0);
    }
};

DIALOG_TEST_MAIN(DialogAccessibilityTest)

#include "tst_dialogaccessibility.moc"
