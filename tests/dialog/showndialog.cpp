// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "showndialog.h"

#include <QQmlComponent>
#include <QQmlContext>
#include <QScreen>
#include <QTest>
#include <QTextLayout>
#include <QTextOption>

#include <algorithm>

namespace {

// The path as the service spells it, with two slashes.
const QString Dialog = QStringLiteral("/usr/share/velmora-installationhandler//SideloadDialog.qml");

void append(QQuickItem *item, QList<QQuickItem *> *items)
{
    items->append(item);
    const QList<QQuickItem *> children = item->childItems();
    for (QQuickItem *child : children) {
        append(child, items);
    }
}

QList<QQuickItem *> allItems(const QQuickWindow *window)
{
    QList<QQuickItem *> items;
    append(window->contentItem(), &items);
    return items;
}

}

ShownDialog::ShownDialog(PackageTexts *texts, const QSize &size)
{
    m_engine.rootContext()->setContextProperty(QStringLiteral("rpmInfo"), texts);
    show(size);
}

ShownDialog::ShownDialog(WithoutPackage)
{
    show(QSize(540, 960));
}

void ShownDialog::show(const QSize &size)
{
    QQmlComponent component(&m_engine, QUrl::fromLocalFile(Dialog));
    m_window.reset(qobject_cast<QQuickWindow *>(component.create()));
    if (!m_window) {
        qFatal("No dialog: %s", qPrintable(component.errorString()));
    }
    m_wasVisibleEarly = m_window->isVisible();
    m_requested = std::make_unique<QSignalSpy>(m_window.get(), SIGNAL(requestInstall()));
    m_dismissed = std::make_unique<QSignalSpy>(m_window.get(), SIGNAL(dismissed()));
    m_window->resize(size);
    m_window->show();
    m_window->requestActivate();
    if (!QTest::qWaitForWindowExposed(m_window.get()) || !QTest::qWaitForWindowActive(m_window.get())) {
        qFatal("The dialog did not become the active window");
    }
    awaitFrame();
}

QQuickItem *ShownDialog::item(const char *id) const
{
    const QQmlContext *context = qmlContext(m_window.get());
    const QList<QQuickItem *> items = allItems(m_window.get());
    const auto found = std::find_if(items.begin(), items.end(), [&](QQuickItem *item) {
        return context->nameForObject(item) == QLatin1String(id);
    });
    if (found == items.end()) {
        qFatal("The dialog has no item %s", id);
    }
    return *found;
}

QObject *ShownDialog::rest() const
{
    const QQmlContext *context = qmlContext(m_window.get());
    const QList<QObject *> children =
            m_window->findChildren<QObject *>() + m_window->contentItem()->findChildren<QObject *>();
    const auto found = std::find_if(children.begin(), children.end(), [context](QObject *child) {
        return context->nameForObject(child) == QLatin1String("rest");
    });
    if (found == children.end()) {
        qFatal("The dialog has no timer");
    }
    return *found;
}

QList<QQuickItem *> ShownDialog::texts() const
{
    QList<QQuickItem *> texts = allItems(m_window.get());
    texts.erase(
            std::remove_if(texts.begin(), texts.end(),
                           [](const QQuickItem *item) { return !item->inherits("QQuickText") || !item->isVisible(); }),
            texts.end());
    return texts;
}

QRectF ShownDialog::place(const QQuickItem *item)
{
    return item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
}

bool ShownDialog::breaksAtWordsOnly(const QQuickItem *text)
{
    const qreal width =
            text->width() - text->property("leftPadding").toReal() - text->property("rightPadding").toReal();
    QTextLayout layout(text->property("text").toString(), text->property("font").value<QFont>());
    QTextOption option;
    option.setWrapMode(QTextOption::WordWrap);
    // Qt Quick lays out text like this, so that it can be scaled.
    option.setUseDesignMetrics(true);
    layout.setTextOption(option);
    layout.beginLayout();
    int lines = 0;
    qreal widest = 0;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        widest = qMax(widest, line.naturalTextWidth());
        ++lines;
    }
    layout.endLayout();
    return widest > width
            || (text->property("lineCount").toInt() == lines
                && qAbs(text->property("contentWidth").toReal() - widest) <= 1);
}

void ShownDialog::awaitFrame() const
{
    QSignalSpy painted(m_window.get(), &QQuickWindow::frameSwapped);
    m_window->update();
    if (painted.isEmpty() && !painted.wait()) {
        qFatal("The dialog was not painted");
    }
}

void ShownDialog::awaitFrames() const
{
    for (int i = 0; i < 5; ++i) {
        awaitFrame();
        QCoreApplication::processEvents();
    }
}

void ShownDialog::awaitReady() const
{
    if (!QTest::qWaitFor([this] { return isReady(); }, 30000)) {
        qFatal("The dialog takes no pointer");
    }
    awaitFrame();
}

void ShownDialog::makeReady() const
{
    rest()->setProperty("interval", 0);
    awaitReady();
}

QImage ShownDialog::picture() const
{
    // QQuickWindow::grabWindow() does not work on the offscreen platform.
    return m_window->screen()->grabWindow(m_window->winId()).toImage();
}
