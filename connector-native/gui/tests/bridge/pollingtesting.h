#pragma once

// What the tests of the status polling share.

#include "bridge/statuspolltask.h"
#include "viewmodeltesting.h"

#include <QCoreApplication>

const QStringList oneRound{u"status"_s, u"server-health"_s, u"bind-status"_s, u"status"_s};

// Each round, and each refresh, asks for the server's health just once.
[[nodiscard]] inline qsizetype rounds(ConnectorViewModel &viewModel)
{
    return titlesOldestFirst(viewModel).count(u"server-health"_s);
}

[[nodiscard]] inline QList<StatusPollTask *> tasks(const ConnectorViewModel &viewModel)
{
    return viewModel.findChildren<StatusPollTask *>();
}

// Whatever is due by now has run afterwards.
inline void runDueEvents()
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}
