// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "transactionviewscene.h"

#include <QQmlEngine>

void TransactionViewScene::setUpView()
{
    setUp();
    m_package.readPackage(packageFile(QStringLiteral("plain")));
    m_view = std::make_unique<TransactionView>(nullptr);
    use(engine());
    connect(m_view.get(), &TransactionView::needConfirm, this, [this] { note(QStringLiteral("needConfirm")); });
    connect(m_view.get(), &TransactionView::installationConfirmed, this,
            [this] { note(QStringLiteral("installationConfirmed") + presence()); });
    connect(m_view.get(), &TransactionView::installationCancelled, this,
            [this] { note(QStringLiteral("installationCancelled") + presence()); });
    settle();
    m_journal.clear();
}

void TransactionViewScene::tearDownView()
{
    m_view.reset();
    tearDown();
}

void TransactionViewScene::use(QQmlEngine *engine)
{
    m_used = engine;
    m_view->setEngine(engine);
}

QQmlContext *TransactionViewScene::context() const
{
    return m_used->rootContext();
}

bool TransactionViewScene::show()
{
    m_view->showConfirmation(&m_package);
    m_journal.clear();
    return m_view->isVisible();
}

bool TransactionViewScene::setDisplay(const QByteArray &state)
{
    m_peer->emitSignal(QStringLiteral("/com/nokia/mce/signal"), QStringLiteral("com.nokia.mce.signal"),
                       QStringLiteral("display_status_ind"), "('" + state + "',)");
    return settle();
}

QString TransactionViewScene::presence() const
{
    return m_view->hasWindow() ? QStringLiteral(", window there") : QStringLiteral(", window gone");
}
