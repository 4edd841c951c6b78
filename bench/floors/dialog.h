// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <QDBusInterface>
#include <QObject>
#include <QQmlEngine>
#include <QStringList>

class QQuickWindow;

/** Asks with a plain page, one request at a time; the display going off is the only answer that it knows. */
class BareDialog : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.velmoraos.installationhandler")

public:
    /** page: the QML file of the page; engine: borrowed. */
    BareDialog(const QString &page, QQmlEngine *engine);

    Q_INVOKABLE void installFiles(const QStringList &files, bool sdkMode, bool keepUserdata);

Q_SIGNALS:
    void installFinished(bool success, const QString &errorString);
    void needConfirm();

private Q_SLOTS:
    void displayChanged(const QString &state);

private:
    QString m_page;
    QQmlEngine *m_engine;
    QDBusInterface m_developerMode;
    QString m_packageName;
    QQuickWindow *m_window = nullptr;
};
