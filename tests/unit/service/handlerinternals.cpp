// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "handlerinternals.h"

namespace {

// Access rights do not count where a template is instantiated explicitly. Each
// instance of Open defines the function that its key declares.
template<typename Key, typename Key::Member member>
struct Open
{
    friend typename Key::Member memberOf(Key) { return member; }
};

template<typename Type>
struct Key
{
    using Member = Type InstallationHandler::*;
};

}

// Defines function(), which returns the private member of a handler.
#define OPEN(Type, function, member)                                                                                   \
    namespace {                                                                                                        \
    struct function##Key : Key<Type>                                                                                   \
    {                                                                                                                  \
        friend Member memberOf(function##Key);                                                                         \
    };                                                                                                                 \
    template struct Open<function##Key, &InstallationHandler::member>;                                                 \
    }                                                                                                                  \
    Type &HandlerInternals::function(InstallationHandler *handler)                                                     \
    {                                                                                                                  \
        return handler->*memberOf(function##Key());                                                                    \
    }

OPEN(qint32, count, m_transactionCount)
OPEN(QList<InstallTransaction *>, pending, m_pendingTransactions)
OPEN(QTimer, idleTimer, m_idleTimer)
OPEN(TransactionView, view, m_transactionView)
OPEN(QDBusInterface, launcherModel, m_launcherModel)
OPEN(QDBusInterface, developerMode, m_developerMode)
OPEN(QDBusInterface, packageManager, m_packageManager)
OPEN(QDBusInterface, hooks, m_hooks)

namespace {

struct EndKey : Key<void()>
{
    friend Member memberOf(EndKey);
};
template struct Open<EndKey, &InstallationHandler::endTransaction>;

}

void HandlerInternals::endTransaction(InstallationHandler *handler)
{
    (handler->*memberOf(EndKey()))();
}
