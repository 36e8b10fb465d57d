#include "fakeconnector.h"

#include <QtCore/qdir.h>
#include <QtCore/qfile.h>

using namespace Qt::StringLiterals;

FakeConnector::FakeConnector(QObject *parent)
    : QObject(parent)
{
    qputenv("FAKE_CONNECTOR", QFile::encodeName(m_directory.path()));
}

void FakeConnector::answer(const QString &command, const QString &output) const
{
    QFile file(path(command));
    if (!file.open(QIODevice::WriteOnly) || file.write(output.toUtf8()) < 0) {
        qFatal("%s could not be written", qPrintable(file.fileName()));
    }
}

QStringList FakeConnector::calls() const
{
    QFile file(path(u"calls"_s));
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    return QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
}

void FakeConnector::reset() const
{
    const QDir directory(m_directory.path());
    for (const QString &name : directory.entryList(QDir::Files)) {
        QFile::remove(path(name));
    }
}
