// SPDX-FileCopyrightText: velmora-installationhandler contributors
// SPDX-License-Identifier: BSD-3-Clause

#include "handlerinternals.h"

namespace {

// Access rights don't count where a template is instantiated explicitly: each
// instance of Open defines the function that its key declares.
template<typename Key, typename Key::Member member>
struct Open
{
    friend typename Key::Member memberOf(Key) { return member; }
};

template<typename Type>
struct Key
{
    using Member = Type;
};

struct Count : Key<qint32 InstallationHandler::*>
{
    friend Member memberOf(Count);
};
struct Pending : Key<QList<InstallTransaction *> InstallationHandler::*>
{
    friend Member memberOf(Pending);
};
struct IdleTimer : Key<QTimer InstallationHandler::*>
{
    friend Member memberOf(IdleTimer);
};
struct View : Key<TransactionView InstallationHandler::*>
{
    friend Member memberOf(View);
};
struct LauncherModel : Key<QDBusInterface InstallationHandler::*>
{
    friend Member memberOf(LauncherModel);
};
struct DeveloperMode : Key<QDBusInterface InstallationHandler::*>
{
    friend Member memberOf(DeveloperMode);
};
struct PackageManager : Key<QDBusInterface InstallationHandler::*>
{
    friend Member memberOf(PackageManager);
};
struct Hooks : Key<QDBusInterface InstallationHandler::*>
{
    friend Member memberOf(Hooks);
};
struct End : Key<void (InstallationHandler::*)()>
{
    friend Member memberOf(End);
};

template struct Open<Count, &InstallationHandler::m_transactionCount>;
template struct Open<Pending, &InstallationHandler::m_pendingTransactions>;
template struct Open<IdleTimer, &InstallationHandler::m_idleTimer>;
template struct Open<View, &InstallationHandler::m_transactionView>;
template struct Open<LauncherModel, &InstallationHandler::m_launcherModel>;
template struct Open<DeveloperMode, &InstallationHandler::m_developerMode>;
template struct Open<PackageManager, &InstallationHandler::m_packageManager>;
template struct Open<Hooks, &InstallationHandler::m_hooks>;
template struct Open<End, &InstallationHandler::endTransaction>;

}

int HandlerInternals::count(InstallationHandler *handler)
{
    return handler->*memberOf(Count());
}

QList<InstallTransaction *> HandlerInternals::pending(InstallationHandler *handler)
{
    return handler->*memberOf(Pending());
}

QTimer *HandlerInternals::idleTimer(InstallationHandler *handler)
{
    return &(handler->*memberOf(IdleTimer()));
}

TransactionView *HandlerInternals::view(InstallationHandler *handler)
{
    return &(handler->*memberOf(View()));
}

const QDBusInterface &HandlerInternals::launcherModel(InstallationHandler *handler)
{
    return handler->*memberOf(LauncherModel());
}

const QDBusInterface &HandlerInternals::developerMode(InstallationHandler *handler)
{
    return handler->*memberOf(DeveloperMode());
}

const QDBusInterface &HandlerInternals::packageManager(InstallationHandler *handler)
{
    return handler->*memberOf(PackageManager());
}

const QDBusInterface &HandlerInternals::hooks(InstallationHandler *handler)
{
    return handler->*memberOf(Hooks());
}

void HandlerInternals::setPackageManagerTimeout(InstallationHandler *handler, int timeout)
{
    (handler->*memberOf(PackageManager())).setTimeout(timeout);
}

void HandlerInternals::endTransaction(InstallationHandler *handler)
{
    (handler->*memberOf(End()))();
}
