#include "bridge/connectorpath.h"
#include "support/testprogram.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <memory>
#include <pwd.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr auto connectorName = "brindlecove-connector"_L1;

enum class Mode { Executable, Plain };

void writeFile(const QString &path, Mode mode)
{
    QVERIFY(QDir().mkpath(QFileInfo(path).path()));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("#!/bin/sh\n");
    const QFile::Permissions plain = QFile::ReadOwner | QFile::WriteOwner;
    QVERIFY(file.setPermissions(mode == Mode::Executable ? plain | QFile::ExeOwner : plain));
}

} // namespace

class TestConnectorPath : public QObject
{
    Q_OBJECT

    [[nodiscard]] QString at(const QString &path) const { return m_root + u'/' + path; }
    [[nodiscard]] ProgramPlace place() const
    {
        return {Packaging::Directory, at(u"real"_s), at(u"called/gui"_s), at(u"home"_s)};
    }
    [[nodiscard]] QString beside(const QString &directory) const
    {
        return at(directory) + u'/' + connectorName;
    }
    [[nodiscard]] QString fallback() const
    {
        return at(u"home/.tidewell/workspace/brindlecove/connector-native/build/brindlecove-connector"_s);
    }

    std::unique_ptr<QTemporaryDir> m_directory;
    QString m_root;
    QString m_before;
    QByteArray m_home;

private slots:
    void init()
    {
        m_before = QDir::currentPath();
        m_home = qgetenv("HOME");
        m_directory = std::make_unique<QTemporaryDir>(QDir::tempPath() + u"/blank and ünïcode XXXXXX"_s);
        QVERIFY(m_directory->isValid());
        // The system's directory for temporary files may itself be a symbolic link.
        m_root = QFileInfo(m_directory->path()).canonicalFilePath();
        QVERIFY(QDir(m_root).mkpath(u"real"_s));
        QVERIFY(QDir(m_root).mkpath(u"called"_s));
        QVERIFY(QDir::setCurrent(m_root));
    }

    void cleanup()
    {
        QVERIFY(QDir::setCurrent(m_before));
        QVERIFY(qputenv("HOME", m_home));
    }

    void argument0Names_data()
    {
        QTest::addColumn<QString>("argument0");
        QTest::addColumn<QString>("directory"); // below the current directory unless absolute

        QTest::newRow("absolute path") << u"/opt/brindlecove/gui"_s << u"/opt/brindlecove"_s;
        QTest::newRow("in the root directory") << u"/gui"_s << u""_s;
        QTest::newRow("relative path") << u"bin/gui"_s << u"bin"_s;
        QTest::newRow("current directory") << u"./gui"_s << QString();
        QTest::newRow("name without a slash") << u"gui"_s << QString();
        QTest::newRow("nothing") << QString(u""_s) << QString();
        QTest::newRow("parent directory") << u"../gui"_s << u".."_s;
        QTest::newRow("doubled slashes") << u"bin//x//gui"_s << u"bin/x"_s;
        QTest::newRow("blanks and Unicode") << u"mein Ordner/ひ ü/g u i"_s << u"mein Ordner/ひ ü"_s;
        QTest::newRow("colon at the start") << u":/gui"_s << u":"_s;
    }

    void argument0Names()
    {
        QFETCH(QString, argument0);
        QFETCH(QString, directory);
        ProgramPlace called = place();
        called.argument0 = argument0;
        const QString base = argument0.startsWith(u'/') ? directory
            : directory.isEmpty()                       ? m_root
                                                        : at(directory);
        QCOMPARE(connectorCandidates(called).at(1), base + u'/' + connectorName);
    }

    void parentOfALinkIsNotTheDirectoryOfTheLink()
    {
        QVERIFY(QDir(m_root).mkpath(u"far/inner"_s));
        QVERIFY(QFile::link(at(u"far/inner"_s), at(u"link"_s)));
        writeFile(beside(u"far"_s), Mode::Executable);
        ProgramPlace called = place();
        called.argument0 = u"link/../gui"_s;
        QCOMPARE(QFileInfo(connectorPath(called)).canonicalFilePath(), beside(u"far"_s));
    }

    void linkedProgramIsLookedUpBesideTheLink()
    {
        writeFile(at(u"far/gui"_s), Mode::Executable);
        writeFile(beside(u"called"_s), Mode::Executable);
        QVERIFY(QFile::link(at(u"far/gui"_s), at(u"called/gui"_s)));
        QCOMPARE(connectorPath(place()), beside(u"called"_s));
    }

    void programPlaceTellsBundles_data()
    {
        QTest::addColumn<QString>("programDirectory");
        QTest::addColumn<bool>("bundle");
        QTest::addColumn<QString>("directory");

        QTest::newRow("in a bundle") << u"/Applications/X.app/Contents/MacOS"_s << true
                                     << u"/Applications/X.app"_s;
        QTest::newRow("plain directory") << u"/usr/lib/brindlecove"_s << false << u"/usr/lib/brindlecove"_s;
        QTest::newRow("root directory") << u"/"_s << false << u"/"_s;
        QTest::newRow("no bundle's name") << u"/x/Contents/MacOS"_s << false << u"/x/Contents/MacOS"_s;
        QTest::newRow("elsewhere in a bundle")
            << u"/X.app/Contents/Tools"_s << false << u"/X.app/Contents/Tools"_s;
    }

    void programPlaceTellsBundles()
    {
        QFETCH(QString, programDirectory);
        QFETCH(bool, bundle);
        QFETCH(QString, directory);
        const ProgramPlace found = programPlace(programDirectory, u"gui"_s, u"/home/user"_s);
        QCOMPARE(found.packaging == Packaging::Bundle, bundle);
        QCOMPARE(found.directory, directory);
        QCOMPARE(found.argument0, u"gui"_s);
        QCOMPARE(found.home, u"/home/user"_s);
    }

    void bundleCandidateLiesInTheBundle()
    {
        ProgramPlace bundle = place();
        bundle.packaging = Packaging::Bundle;
        bundle.directory = at(u"X.app"_s);
        writeFile(beside(u"X.app"_s), Mode::Executable);
        QCOMPARE(connectorPath(bundle), fallback());
        writeFile(beside(u"X.app/Contents/MacOS"_s), Mode::Executable);
        QCOMPARE(connectorPath(bundle), beside(u"X.app/Contents/MacOS"_s));
    }

    void firstCandidateWins()
    {
        writeFile(fallback(), Mode::Executable);
        QCOMPARE(connectorPath(place()), fallback());
        writeFile(beside(u"called"_s), Mode::Executable);
        QCOMPARE(connectorPath(place()), beside(u"called"_s));
        writeFile(beside(u"real"_s), Mode::Executable);
        QCOMPARE(connectorPath(place()), beside(u"real"_s));
    }

    void unusableCandidatesArePassedOver_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::newRow("directory") << u"directory"_s;
        QTest::newRow("file without the permission") << u"plain"_s;
        QTest::newRow("dangling link") << u"dangling"_s;
        QTest::newRow("link to a directory") << u"linked directory"_s;
    }

    void unusableCandidatesArePassedOver()
    {
        QFETCH(QString, kind);
        for (const QString &path : {beside(u"real"_s), beside(u"called"_s)}) {
            if (kind == u"directory"_s) {
                QVERIFY(QDir().mkpath(path));
            } else if (kind == u"plain"_s) {
                writeFile(path, Mode::Plain);
            } else {
                QVERIFY(QFile::link(kind == u"dangling"_s ? at(u"nowhere"_s) : m_root, path));
            }
        }
        QCOMPARE(connectorPath(place()), fallback());
    }

    void linkToAnExecutableCounts()
    {
        writeFile(at(u"far/tool"_s), Mode::Executable);
        QVERIFY(QFile::link(at(u"far/tool"_s), beside(u"real"_s)));
        QCOMPARE(connectorPath(place()), beside(u"real"_s));
    }

    void fallbackIsNotTested()
    {
        QVERIFY(!QFileInfo::exists(fallback()));
        QCOMPARE(connectorPath(place()), fallback());
    }

    void evaluatedAfreshAtEachCall()
    {
        const ProgramPlace unchanged = place();
        QCOMPARE(connectorPath(unchanged), fallback());
        writeFile(beside(u"real"_s), Mode::Executable);
        QCOMPARE(connectorPath(unchanged), beside(u"real"_s));
        QVERIFY(QFile::remove(beside(u"real"_s)));
        QCOMPARE(connectorPath(unchanged), fallback());
    }

    void followsTheCurrentDirectory()
    {
        ProgramPlace called = place();
        called.argument0 = u"gui"_s;
        writeFile(beside(u"called"_s), Mode::Executable);
        QCOMPARE(connectorPath(called), fallback());
        QVERIFY(QDir::setCurrent(at(u"called"_s)));
        QCOMPARE(connectorPath(called), beside(u"called"_s));
    }

    void relativeHomeBecomesAbsolute()
    {
        ProgramPlace relative = place();
        relative.home = u"home"_s;
        QCOMPARE(connectorPath(relative), fallback());
    }

    void currentPlaceIsThisProgram()
    {
        const ProgramPlace found = currentProgramPlace();
        QCOMPARE(found.packaging, Packaging::Directory);
        QCOMPARE(found.directory, QCoreApplication::applicationDirPath());
        QCOMPARE(found.argument0, QCoreApplication::arguments().constFirst());
    }

    void homeComesFromTheEnvironment()
    {
        qputenv("HOME", at(u"home of ü"_s).toUtf8());
        QCOMPARE(currentProgramPlace().home, at(u"home of ü"_s));
    }

    void homeComesFromTheUserEntry_data()
    {
        QTest::addColumn<bool>("isSet");
        QTest::newRow("HOME is unset") << false;
        QTest::newRow("HOME is empty") << true;
    }

    void homeComesFromTheUserEntry()
    {
        QFETCH(bool, isSet);
        if (isSet) {
            qputenv("HOME", "");
        } else {
            qunsetenv("HOME");
        }
        const passwd *const user = getpwuid(getuid());
        QVERIFY(user != nullptr);
        QCOMPARE(currentProgramPlace().home, QFile::decodeName(user->pw_dir));
    }
};

static const TestClass<TestConnectorPath> registered("tst_connectorpath");

#include "tst_connectorpath.moc"
