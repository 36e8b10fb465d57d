#pragma once

// What the tests of the view model share: places, texts and readers of the log.

#include "bridge/connectorviewmodel.h"
#include "support/fakeconnector.h"

#include <chrono>

using namespace Qt::StringLiterals;

const QString pending = u"pending_signature"_s;
const QString authorized = uR"("bindState":"authorized")"_s;

// A place from which no candidate exists, with home as the user's home directory.
[[nodiscard]] inline ProgramPlace placeWithoutConnector(const QString &home)
{
    const QByteArray path = QFile::encodeName(home);
    return {Packaging::Directory, path + "/absent", path + "/absent/program", path};
}

[[nodiscard]] inline QString failureText(const QString &reason, const QString &path)
{
    return u"failed to run connector: "_s + reason + u"\nresolved_path="_s + path;
}

[[nodiscard]] inline QString missingConnectorText(const QString &home)
{
    return failureText(
        u"the file does not exist"_s,
        home + u"/.tidewell/workspace/brindlecove/connector-native/build/brindlecove-connector"_s);
}

// No test waits this long: whatever is due after such a pause is not seen.
constexpr std::chrono::milliseconds endlessPause = std::chrono::hours(1);

[[nodiscard]] inline QStringList titlesOldestFirst(ConnectorViewModel &viewModel)
{
    QStringList titles;
    for (int row = viewModel.logs()->count() - 1; row >= 0; --row) {
        titles.append(viewModel.logs()->at(row).title);
    }
    return titles;
}
