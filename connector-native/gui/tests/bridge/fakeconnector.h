#pragma once

// What the tests of the view model share: a stand-in for the connector and readers of what came of it.

#include "bridge/connectorviewmodel.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <chrono>

using namespace Qt::StringLiterals;

// A real child process whose answers a test may change at any moment. It writes down how it was called
// and prints nothing for a command that was given no answer.
class FakeConnector
{
public:
    FakeConnector()
    {
        QDir(directory()).mkdir(u"answers"_s);
        QDir(directory()).mkdir(u"actions"_s);
        write(programName, script);
        QFile::setPermissions(program(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    [[nodiscard]] QString directory() const { return m_directory.path(); }
    [[nodiscard]] QString program() const { return m_directory.filePath(programName); }

    // Nothing but the first candidate leads anywhere.
    [[nodiscard]] ProgramPlace place() const
    {
        return {Packaging::Directory, directory(), directory() + u"/absent/program"_s,
                directory() + u"/absent"_s};
    }

    void answer(const QString &command, const QString &text) const { answerBytes(command, text.toUtf8()); }

    void answerBytes(const QString &command, const QByteArray &bytes) const
    {
        write(u"answers/"_s + command, bytes);
    }

    // Lines of shell instead of a fixed answer.
    void act(const QString &command, const QByteArray &lines) const { write(u"actions/"_s + command, lines); }

    // The arguments of each call, in the order of the calls.
    [[nodiscard]] QList<QStringList> calls() const
    {
        QFile file(m_directory.filePath(u"calls"_s));
        QByteArrayList words = file.open(QIODevice::ReadOnly) ? file.readAll().split('\0') : QByteArrayList();
        QList<QStringList> calls;
        while (words.size() > 1) {
            calls.append(QStringList());
            for (int left = words.takeFirst().toInt(); left > 0; --left) {
                calls.last().append(QString::fromUtf8(words.takeFirst()));
            }
        }
        return calls;
    }

private:
    // The number of arguments goes first, so that empty ones are seen.
    static constexpr auto script = R"(#!/bin/sh
home=${0%/*}
printf '%s\0' "$#" "$@" >>"$home/calls"
if [ -f "$home/actions/$1" ]; then . "$home/actions/$1"; exit; fi
if [ -f "$home/answers/$1" ]; then exec cat "$home/answers/$1"; fi
)";

    void write(const QString &name, const QByteArray &content) const
    {
        QFile file(m_directory.filePath(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
            qFatal("The stand-in for the connector could not be written.");
        }
    }

    const QString programName = u"brindlecove-connector"_s;
    QTemporaryDir m_directory{QDir::tempPath() + u"/connector ü XXXXXX"_s};
};

// A place from which no candidate exists, with home as the user's home directory.
[[nodiscard]] inline ProgramPlace placeWithoutConnector(const QString &home)
{
    return {Packaging::Directory, home + u"/absent"_s, home + u"/absent/program"_s, home};
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
