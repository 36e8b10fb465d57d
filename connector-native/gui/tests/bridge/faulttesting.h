#pragma once

// What the table of faults is made of: ways to spoil a connector, and what one run of it must then come to.

#include "childtesting.h"
#include "viewmodeltesting.h"

#include <QSignalSpy>
#include <QTest>

#include <sys/resource.h>

const QString server = u"server-health"_s;
const QString reachableMark = uR"({"reachable":true})"_s;
constexpr QFile::Permissions executable = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;

/// A connector in the first place that is looked at, and a home whose last place a test may fill.
struct Scene
{
    FakeConnector connector;
    QTemporaryDir home;

    Scene() { connector.answer(server, reachableMark); }

    [[nodiscard]] ProgramPlace place() const
    {
        ProgramPlace place = connector.place();
        place.home = QFile::encodeName(home.path());
        return place;
    }

    [[nodiscard]] QString lastPlace() const { return QFile::decodeName(connectorCandidates(place()).last()); }

    /// The path of the last place, with the folder it lies in; nothing is left of the first.
    [[nodiscard]] QString moveToLastPlace() const
    {
        QDir().mkpath(QFileInfo(lastPlace()).path());
        QFile::remove(connector.program());
        return lastPlace();
    }
};

[[nodiscard]] inline bool replaceFile(const QString &path, const Bytes &content,
                                      QFile::Permissions permissions = executable)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(content) == content.size()
        && file.setPermissions(permissions);
}

/// A connector in the first place that answers as it should, whatever lies there.
[[nodiscard]] inline bool repair(const Scene &scene)
{
    const QString path = scene.connector.program();
    return (QDir().rmdir(path) || QFile::remove(path) || !QFile::exists(path))
        && replaceFile(path, "#!/bin/sh\nprintf '" + reachableMark.toUtf8() + "'\n");
}

/// What came of asking for the server's health once.
struct Outcome
{
    QString output;
    QString word;
    qsizetype logEntries = 0;
    qsizetype completions = 0;
    bool sameDescriptors = false;
    bool noChildLeft = false;

    friend bool operator==(const Outcome &, const Outcome &) = default;
};

[[nodiscard]] inline char *toString(const Outcome &outcome)
{
    return QTest::toString(u"%1 entries, %2 completions, %3, %4, word %5, output %6"_s.arg(outcome.logEntries)
                               .arg(outcome.completions)
                               .arg(outcome.sameDescriptors ? u"same descriptors"_s : u"other descriptors"_s,
                                    outcome.noChildLeft ? u"no child"_s : u"a child"_s, outcome.word,
                                    outcome.output.left(200)));
}

[[nodiscard]] inline Outcome expected(const QString &output, const QString &word)
{
    return {output, word, 1, 1, true, true};
}

[[nodiscard]] inline Outcome askOnce(ConnectorViewModel &viewModel)
{
    const int entriesBefore = viewModel.logs()->count();
    const std::vector<int> descriptors = openDescriptors();
    const QSignalSpy completions(&viewModel, &ConnectorViewModel::lastServerOutputChanged);
    viewModel.checkServer();
    const bool isLogged = viewModel.logs()->count() > 0
        && viewModel.logs()->at(0).output == viewModel.lastServerOutput()
        && viewModel.logs()->at(0).title == server;
    return {viewModel.lastServerOutput(),
            viewModel.serverStatus(),
            isLogged ? viewModel.logs()->count() - entriesBefore : -1,
            completions.count(),
            openDescriptors() == descriptors,
            noChildren()};
}

/// The fault has come to this, and afterwards everything is as if it had never been.
inline void checkThatItPasses(const Scene &scene, const Outcome &outcome)
{
    ConnectorViewModel viewModel(scene.place(), endlessPause);
    QCOMPARE(askOnce(viewModel), outcome);
    QVERIFY(repair(scene));
    QCOMPARE(askOnce(viewModel), expected(reachableMark, u"reachable"_s));
}

/// As a limit: as many as are open now, and none between.
[[nodiscard]] inline rlim_t lowestFreeDescriptor()
{
    int number = 0;
    while (fcntl(number, F_GETFD) >= 0) {
        ++number;
    }
    return static_cast<rlim_t>(number);
}

/// A lowered limit of this process, until the end of the scope.
class Limit
{
public:
    Limit(decltype(RLIMIT_CORE) resource, rlim_t value)
        : m_resource(resource)
    {
        getrlimit(m_resource, &m_before);
        const rlimit lowered{value, m_before.rlim_max};
        setrlimit(m_resource, &lowered);
    }
    Q_DISABLE_COPY_MOVE(Limit)
    ~Limit() { setrlimit(m_resource, &m_before); }

private:
    decltype(RLIMIT_CORE) m_resource;
    rlimit m_before{};
};
