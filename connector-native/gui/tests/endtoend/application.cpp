#include "application.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcessEnvironment>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int startTimeout = 15000;
constexpr int endTimeout = 20000;

// What Qt prints about the programs that use it, above all on a busy machine: of a key about which no
// assistive technology answers in time, of the answer that comes later, and, from 6.8 on, of a question about
// an item that went while the question was on its way.
constexpr const char *complaintsOfOthers[] = {
    "QSpiApplication::keyEventError",
    "QSpiApplication::notifyKeyboardListenerCallback with no queued key called",
    "qt.accessibility.atspi: Could not find accessible on path:",
};

bool replaceFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(content) == content.size();
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool makeExecutable(const QString &path)
{
    return QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

} // namespace

Application::Application()
{
    // The program finds its connector beside itself, so each run needs a copy of its own.
    QFile::copy(QStringLiteral(APPLICATION_PROGRAM), path(u"BrindlecoveConnectorGUI"_s));
    QDir(m_directory.path()).mkdir(u"state"_s);
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"BRINDLECOVE_SIMULATOR_STATE"_s, path(u"state"_s));
    m_process.setProcessEnvironment(environment);
    m_process.setProcessChannelMode(QProcess::MergedChannels);
}

Application::~Application()
{
    m_process.terminate();
    if (!m_process.waitForFinished(endTimeout)) {
        m_process.kill();
        m_process.waitForFinished(endTimeout);
    }
}

QString Application::connectorPath() const
{
    return path(u"brindlecove-connector"_s);
}

bool Application::installSimulator() const
{
    return removeConnector() && QFile::link(QStringLiteral(SIMULATOR_PROGRAM), connectorPath());
}

bool Application::installPrinter(const QByteArray &output) const
{
    return removeConnector() && replaceFile(path(u"output"_s), output)
        && replaceFile(connectorPath(), "#!/bin/sh\nexec cat \"${0%/*}/output\"\n")
        && makeExecutable(connectorPath());
}

bool Application::removeConnector() const
{
    QFile::remove(connectorPath());
    return !QFile::exists(connectorPath());
}

bool Application::setFaults(const QByteArray &lines) const
{
    return replaceFile(path(u"state/faults"_s), lines);
}

QByteArray Application::stateFile(const QString &name) const
{
    return contentOf(path(u"state/"_s + name));
}

QList<QStringList> Application::calls() const
{
    QList<QStringList> calls;
    QList<QByteArray> lines = stateFile(u"calls.log"_s).split('\n');
    // What follows the last line feed is no call.
    lines.removeLast();
    for (const QByteArray &line : std::as_const(lines))
        calls.append(QVariant(QJsonDocument::fromJson(line).array().toVariantList()).toStringList());
    return calls;
}

void Application::setEnvironment(const QString &name, const QString &value)
{
    auto environment = m_process.processEnvironment();
    environment.insert(name, value);
    m_process.setProcessEnvironment(environment);
}

void Application::preload(const QString &library)
{
    setEnvironment(u"LD_PRELOAD"_s, library);
    // A sanitizer insists on being loaded first unless it is told not to.
    setEnvironment(u"ASAN_OPTIONS"_s, qEnvironmentVariable("ASAN_OPTIONS") + u":verify_asan_link_order=0"_s);
}

bool Application::launch()
{
    m_process.start(path(u"BrindlecoveConnectorGUI"_s), QStringList());
    return m_process.waitForStarted();
}

bool Application::waitForWindow()
{
    return QTest::qWaitFor(
        [this] {
            m_root = AccessibleNode::ofProcess(processId());
            return !m_root.isNull() && !m_root.children().isEmpty();
        },
        startTimeout);
}

bool Application::start()
{
    return launch() && waitForWindow();
}

bool Application::startBy(const QString &lines)
{
    const QString variables = u"place=${0%/*} name=${0##*/}; "_s;
    m_process.start(u"bash"_s, {u"-c"_s, variables + lines, path(u"BrindlecoveConnectorGUI"_s)});
    return m_process.waitForStarted() && waitForWindow();
}

int Application::waitForEnd()
{
    const bool ended = m_process.state() == QProcess::NotRunning || m_process.waitForFinished(endTimeout);
    return ended && m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
}

QByteArray Application::printed()
{
    m_printed += m_process.readAll();
    QByteArrayList lines = m_printed.split('\n');
    lines.removeIf([](const QByteArray &line) {
        return std::ranges::any_of(complaintsOfOthers,
                                   [&](const char *start) { return line.startsWith(start); });
    });
    return lines.join('\n');
}
