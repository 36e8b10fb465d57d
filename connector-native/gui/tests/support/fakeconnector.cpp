#include "support/fakeconnector.h"

#include <QtCore/qdir.h>
#include <QtCore/qfile.h>

using namespace Qt::StringLiterals;

namespace {

const QString answers = u"answers"_s;
const QString actions = u"actions"_s;

} // namespace

FakeConnector::FakeConnector(QObject *parent)
    : QObject(parent)
    , m_directory(QDir::tempPath() + u"/connector \u00FC XXXXXX"_s)
{
    reset();
    QFile script(QStringLiteral(FAKE_CONNECTOR_SCRIPT));
    if (!script.copy(program())) {
        qFatal("The stand-in for the connector could not be written.");
    }
    QFile::setPermissions(program(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

void FakeConnector::steerBesideProgram() const
{
    qputenv("FAKE_CONNECTOR", QFile::encodeName(directory()));
}

QString FakeConnector::program() const
{
    return m_directory.filePath(u"brindlecove-connector"_s);
}

ProgramPlace FakeConnector::place() const
{
    const QByteArray here = QFile::encodeName(directory());
    return {Packaging::Directory, here, here + "/absent/program", here + "/absent"};
}

void FakeConnector::answer(const QString &command, const QString &text) const
{
    answerBytes(command, text.toUtf8());
}

void FakeConnector::answerBytes(const QString &command, const QByteArray &bytes) const
{
    write(answers + u'/' + command, bytes);
}

void FakeConnector::act(const QString &command, const QByteArray &lines) const
{
    write(actions + u'/' + command, lines);
}

QList<QStringList> FakeConnector::callArguments() const
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

QStringList FakeConnector::calls() const
{
    QStringList lines;
    for (const QStringList &call : callArguments()) {
        lines.append(call.join(u' '));
    }
    return lines;
}

void FakeConnector::reset() const
{
    QFile::remove(m_directory.filePath(u"calls"_s));
    for (const QString &folder : {answers, actions}) {
        QDir(m_directory.filePath(folder)).removeRecursively();
        QDir(directory()).mkdir(folder);
    }
}

void FakeConnector::write(const QString &name, const QByteArray &content) const
{
    QFile file(m_directory.filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
        qFatal("%s could not be written", qPrintable(file.fileName()));
    }
}

#include "moc_fakeconnector.cpp"
