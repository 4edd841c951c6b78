// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#pragma once

#include <qmcedisplay.h>

#include <QObject>
#include <QString>

class QQmlEngine;
class QQuickWindow;
class RpmInfo;

/**
 * Asks the user with a full-screen dialog whether a package file is to be
 * installed, and keeps the display on meanwhile (MCE, system bus). The display
 * going off counts as a refusal.
 *
 * Each showConfirmation() is followed by installationConfirmed() or
 * installationCancelled(), unless closeWindow() or another showing takes its
 * place (Known behaviour 58). If the dialog cannot be loaded, a warning is logged and
 * no signal follows (Known behaviour 52).
 */
class TransactionView : public QObject
{
    Q_OBJECT

public:
    explicit TransactionView(QObject *parent);
    ~TransactionView() override;

    /** The engine that the dialog is created in; borrowed, it outlives the view. */
    void setEngine(QQmlEngine *engine);

    /** Whether the dialog is on screen. */
    bool isVisible() const;

    bool hasWindow() const;

    /** Takes the dialog away without an answer. */
    void closeWindow();

    /** Shows the dialog. QML sees info, which is borrowed until the answer, as "rpmInfo". */
    void showConfirmation(RpmInfo *info);

Q_SIGNALS:
    /** The dialog is about to ask the user. */
    void needConfirm();
    void installationConfirmed();
    void installationCancelled();

private Q_SLOTS:
    void handleDialogDismissed();
    void displayStateChanged();
    void handleInstallationConfirmed();

private:
    void showDialog(const QString &qmlFile);
    void beginDisplayNotification();
    void endDisplayNotification(qint32 linger);
    void cancel(qint32 linger);

    QQmlEngine *m_engine = nullptr;
    QMceDisplay m_display;
    QQuickWindow *m_window = nullptr;
    QString m_notificationName;
};
