#include "screenreader.h"

#include <QDir>
#include <QFile>
#include <QProcessEnvironment>
#include <QStandardPaths>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr int readerStartTimeout = 30000;
constexpr int readerEndTimeout = 10000;

bool writeCustomizations()
{
    const QDir home(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/orca"_s);
    QFile file(home.filePath(u"orca-customizations.py"_s));
    return home.mkpath(u"."_s) && file.open(QIODevice::WriteOnly) && file.write("import orcavoice\n") > 0;
}

} // namespace

ScreenReader::ScreenReader()
{
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"SPOKEN_LINES"_s, m_directory.filePath(u"spoken"_s));
    environment.insert(u"PYTHONPATH"_s, QStringLiteral(VOICE_DIRECTORY));
    environment.insert(u"PYTHONDONTWRITEBYTECODE"_s, u"1"_s);
    m_process.setProcessEnvironment(environment);
    m_process.setStandardOutputFile(QProcess::nullDevice());
    m_process.setStandardErrorFile(QProcess::nullDevice());
    const bool isSetUp = writeCustomizations();
    m_process.start(u"orca"_s, {u"--disable"_s, u"braille,main-window,splash-window"_s});
    const QStringList greeting{u"Screen reader on."_s};
    if (!isSetUp || !QTest::qWaitFor([&] { return everythingHeard() == greeting; }, readerStartTimeout))
        qFatal("orca failed");
    forget();
}

ScreenReader::~ScreenReader()
{
    m_process.terminate();
    if (!m_process.waitForFinished(readerEndTimeout)) {
        m_process.kill();
        m_process.waitForFinished(readerEndTimeout);
    }
}

QStringList ScreenReader::heard() const
{
    return everythingHeard().mid(m_forgotten);
}

void ScreenReader::forget()
{
    m_forgotten = everythingHeard().size();
}

QStringList ScreenReader::everythingHeard() const
{
    QFile file(m_directory.filePath(u"spoken"_s));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n');
    // What follows the last line feed is still being written.
    lines.removeLast();
    lines.removeAll(u"•"_s);
    lines.removeAll(u"Copied selection to clipboard."_s);
    return lines;
}
