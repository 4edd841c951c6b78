// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "mdeclarativecache.h"

#include "testrunner.h"

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQuickView>

#include <memory>

namespace {

/** An application whose command line asks for no display. */
struct Application
{
    char program[8] = "handler";
    char option[10] = "-platform";
    char platform[10] = "offscreen";
    char own[8] = "install";
    char *values[5] = {program, option, platform, own, nullptr};
    int count = 4;
    std::unique_ptr<QGuiApplication> made{MDeclarativeCache::qApplication(count, values)};
};

}

class MDeclarativeCacheTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void makesTheApplicationFromTheCommandLine()
    {
        const Application application;
        QCOMPARE(QCoreApplication::instance(), application.made.get());
        QVERIFY(!application.made->parent());
        QCOMPARE(QGuiApplication::platformName(), "offscreen"_s);
        QCOMPARE(QCoreApplication::arguments(), QStringList({"handler"_s, "install"_s}));
        QCOMPARE(application.count, 2);
    }

    void makesANewApplicationEachTime()
    {
        Application().made.reset();
        QVERIFY(!QCoreApplication::instance());
        const Application application;
        QCOMPARE(QCoreApplication::instance(), application.made.get());
    }

    void makesHiddenViewsWithEngines()
    {
        const Application application;
        const std::unique_ptr<QQuickView> view(MDeclarativeCache::qQuickView());
        const std::unique_ptr<QQuickView> other(MDeclarativeCache::qQuickView());

        QVERIFY(view != other);
        QVERIFY(!view->QObject::parent());
        QVERIFY(!view->isVisible());
        QVERIFY(view->engine() != other->engine());

        QQmlComponent component(view->engine());
        component.setData("import QtQml 2.15\nQtObject { property int answer: 6 * 7 }", {});
        const std::unique_ptr<QObject> object(component.create());
        QVERIFY2(object, qPrintable(component.errorString()));
        QCOMPARE(object->property("answer").toInt(), 42);
    }
};

VELMORA_TEST(MDeclarativeCacheTest, Anywhere, None)

#include "tst_mdeclarativecache.moc"
