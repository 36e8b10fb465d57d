#include "faulttesting.h"
#include "support/testprogram.h"

namespace {

using Spoil = std::function<bool(const Scene &)>;
using Paths = std::function<QString(const Scene &)>;

QString firstPath(const Scene &scene)
{
    return scene.connector.program();
}

QString lastPath(const Scene &scene)
{
    return scene.lastPlace();
}

} // namespace

Q_DECLARE_METATYPE(Spoil)
Q_DECLARE_METATYPE(Paths)

// One row for each thing that can go wrong with the connector. Whatever it is: one entry in the log, one
// completion, words that follow from the text, no child and no descriptor left, and a window that goes on.
class TestFaultTable : public QObject
{
    // Crashes on purpose leave no core files behind.
    Q_OBJECT

private slots:
    void initTestCase()
    {
        const rlimit none{};
        QCOMPARE(setrlimit(RLIMIT_CORE, &none), 0);
    }

    void cannotBeStarted_data()
    {
        QTest::addColumn<Spoil>("spoil");
        QTest::addColumn<QString>("reason");
        QTest::addColumn<Paths>("path");

        const QString missing = u"the file does not exist"_s;
        const Spoil remove = [](const Scene &scene) { return QFile::remove(firstPath(scene)); };
        QTest::newRow("missing") << remove << missing << Paths(lastPath);
        QTest::newRow("not executable, so the last place counts") << Spoil([](const Scene &scene) {
            return QFile::setPermissions(firstPath(scene), QFile::ReadOwner);
        }) << missing << Paths(lastPath);
        QTest::newRow("directory, so the last place counts")
            << Spoil([=](const Scene &scene) { return remove(scene) && QDir().mkdir(firstPath(scene)); })
            << missing << Paths(lastPath);
        QTest::newRow("dangling link, so the last place counts") << Spoil([=](const Scene &scene) {
            return remove(scene) && QFile::link(u"/nowhere"_s, firstPath(scene));
        }) << missing << Paths(lastPath);
        QTest::newRow("not executable in the last place") << Spoil([](const Scene &scene) {
            return replaceFile(scene.moveToLastPlace(), "#!/bin/sh\n", QFile::ReadOwner);
        }) << u"the file is not executable"_s << Paths(lastPath);
        QTest::newRow("directory in the last place")
            << Spoil([](const Scene &scene) { return QDir().mkdir(scene.moveToLastPlace()); })
            << u"the path is a directory"_s << Paths(lastPath);
        QTest::newRow("dangling link in the last place")
            << Spoil([](const Scene &scene) { return QFile::link(u"/nowhere"_s, scene.moveToLastPlace()); })
            << missing << Paths(lastPath);
        QTest::newRow("wrong format") << Spoil([](const Scene &scene) {
            return replaceFile(firstPath(scene),
                               "\x7F"
                               "ELF?");
        }) << u"the file has no format that this system can run"_s
                                      << Paths(firstPath);
        QTest::newRow("script that names no interpreter")
            << Spoil([](const Scene &scene) { return replaceFile(firstPath(scene), "echo\n"); })
            << u"the file has no format that this system can run"_s << Paths(firstPath);
        QTest::newRow("script whose interpreter is missing")
            << Spoil([](const Scene &scene) { return replaceFile(firstPath(scene), "#!/nowhere/sh\n"); })
            << u"the interpreter or loader that the file asks for does not exist"_s << Paths(firstPath);
    }

    void cannotBeStarted()
    {
        QFETCH(Spoil, spoil);
        QFETCH(QString, reason);
        QFETCH(Paths, path);
        const Scene scene;
        QVERIFY(spoil(scene));
        checkThatItPasses(scene, expected(failureText(reason, path(scene)), u"unknown"_s));
    }

    void endsBadly_data()
    {
        QTest::addColumn<Bytes>("lines");
        QTest::addColumn<QString>("output");
        QTest::addColumn<QString>("word");

        const QString unknown = u"unknown"_s;
        QTest::newRow("exit code 1") << "printf no; exit 1"_ba << u"no"_s << unknown;
        QTest::newRow("exit code 255 does not spoil the answer")
            << R"(printf '{"reachable":true}'; exit 255)"_ba << reachableMark << u"reachable"_s;
        QTest::newRow("killed") << "printf half; kill -KILL $$; printf way"_ba << u"half"_s << unknown;
        QTest::newRow("crashed in the middle of its output")
            << R"(printf '{"reachable":fal'; kill -SEGV $$; printf 'se}')"_ba << uR"({"reachable":fal)"_s
            << unknown;
        QTest::newRow("crashed after the marker")
            << R"(printf '{"reachable":false'; kill -SEGV $$; printf })"_ba << uR"({"reachable":false)"_s
            << u"unreachable"_s;
        QTest::newRow("prints nothing") << ":"_ba << QString() << unknown;
        QTest::newRow("marker torn apart by standard error")
            << R"(printf '{"reachable":'; printf oops >&2; printf 'true}')"_ba
            << uR"({"reachable":oopstrue})"_s << unknown;
        QTest::newRow("marker on standard error")
            << R"(printf 1; printf '{"reachable":true}' >&2; printf 2)"_ba << u"1{\"reachable\":true}2"_s
            << u"reachable"_s;
        QTest::newRow("closes its output and lives on")
            << "printf a; exec >&- 2>&-; sleep 0.2"_ba << u"a"_s << unknown;
        QTest::newRow("leaves a child that keeps the output")
            << R"((sleep 0.2; printf '"reachable":true') & printf early,)"_ba << u"early,\"reachable\":true"_s
            << u"reachable"_s;
        QTest::newRow("ignores the request to end")
            << "trap '' TERM; kill -TERM $$; printf alive"_ba << u"alive"_s << unknown;
    }

    void endsBadly()
    {
        QFETCH(Bytes, lines);
        QFETCH(QString, output);
        QFETCH(QString, word);
        const Scene scene;
        scene.connector.act(server, lines);
        checkThatItPasses(scene, expected(output, word));
    }

    void printsMuch_data()
    {
        QTest::addColumn<int>("size");
        for (const int size : {65'536, 65'537, 1'048'576}) {
            QTest::addRow("%d bytes", size) << size;
        }
    }

    void printsMuch()
    {
        QFETCH(int, size);
        const QString output = QString(size - reachableMark.size(), u'x') + reachableMark;
        const Scene scene;
        scene.connector.answer(server, output);
        checkThatItPasses(scene, expected(output, u"reachable"_s));
    }

    void printsWhatIsNoText_data()
    {
        QTest::addColumn<Bytes>("bytes");
        QTest::addColumn<qsizetype>("replacements");

        QTest::newRow("continuation byte alone") << "\x80"_ba << qsizetype(1);
        QTest::newRow("overlong in two bytes") << "\xC0\xAF"_ba << qsizetype(2);
        QTest::newRow("overlong in three bytes") << "\xE0\x80\xAF"_ba << qsizetype(3);
        QTest::newRow("overlong in four bytes") << "\xF0\x80\x80\xAF"_ba << qsizetype(4);
        QTest::newRow("half of a surrogate pair") << "\xED\xA0\x80"_ba << qsizetype(3);
        QTest::newRow("surrogate pair") << "\xED\xA0\xBD\xED\xB8\x80"_ba << qsizetype(6);
        QTest::newRow("beyond Unicode") << "\xF4\x90\x80\x80"_ba << qsizetype(4);
        QTest::newRow("bytes of no character") << "\xF5\xFE\xFF"_ba << qsizetype(3);
        QTest::newRow("two bytes cut short") << "\xC3"_ba << qsizetype(1);
        QTest::newRow("three bytes cut short") << "\xE2\x82"_ba << qsizetype(1);
        QTest::newRow("four bytes cut short") << "\xF0\x9F\x98"_ba << qsizetype(1);
    }

    // In front of the marker, inside of the text and at its very end.
    void printsWhatIsNoText()
    {
        QFETCH(Bytes, bytes);
        QFETCH(qsizetype, replacements);
        const QString replaced(replacements, QChar::ReplacementCharacter);
        const Scene scene;
        scene.connector.answerBytes(server, bytes + reachableMark.toUtf8() + bytes);
        checkThatItPasses(scene, expected(replaced + reachableMark + replaced, u"reachable"_s));
    }

    void printsText_data()
    {
        QTest::addColumn<QString>("text");

        QTest::newRow("byte-order mark") << u"\uFEFF"_s;
        QTest::newRow("NUL") << u"a\0b\0"_s;
        QTest::newRow("Windows line ends") << u"a\r\nb\r\n"_s;
        QTest::newRow("10,000 combining marks") << u"e"_s + QString(10'000, QChar(u'\u0301'));
        QTest::newRow("right-to-left") << u"\u202E\u05D0\u05D1\u0627\u0644"_s;
        QTest::newRow("escape sequences") << u"\x1B[2J\x1B[31m\x1B]0;title\x07\x1B[6n\x9B"_s;
        QTest::newRow("markup") << u"<b>bold</b>&amp;<script>alert(1)</script>"_s;
        QTest::newRow("image link") << u"<img src=\"http://127.0.0.1:9/x.png\">![x](http://127.0.0.1:9/)"_s;
        QTest::newRow("markers of arguments") << u"%1 %2 %n %s"_s;
    }

    void printsText()
    {
        QFETCH(QString, text);
        const Scene scene;
        scene.connector.answer(server, text + reachableMark + text);
        checkThatItPasses(scene, expected(text + reachableMark + text, u"reachable"_s));
    }

    void vanishesBetweenTwoRuns()
    {
        const Scene scene;
        ConnectorViewModel viewModel(scene.place(), endlessPause);
        QCOMPARE(askOnce(viewModel), expected(reachableMark, u"reachable"_s));
        QVERIFY(QFile::remove(scene.connector.program()));
        QCOMPARE(askOnce(viewModel),
                 expected(failureText(u"the file does not exist"_s, scene.lastPlace()), u"unknown"_s));
    }

    void isReplacedWhileItRuns()
    {
        const Scene scene;
        const QString successor = scene.connector.program() + u".new"_s;
        QVERIFY(replaceFile(successor, "#!/bin/sh\nprintf '{\"reachable\":false}'\n"));
        scene.connector.act(server, "printf '{\"reachable\":'; mv \"$0.new\" \"$0\"; printf 'true}'\n");
        ConnectorViewModel viewModel(scene.place(), endlessPause);
        QCOMPARE(askOnce(viewModel), expected(reachableMark, u"reachable"_s));
        QCOMPARE(askOnce(viewModel), expected(uR"({"reachable":false})"_s, u"unreachable"_s));
    }

    void noDescriptorIsLeft()
    {
        const Scene scene;
        ConnectorViewModel viewModel(scene.place(), endlessPause);
        const QString text =
            failureText(u"this program has no file descriptors left"_s, scene.connector.program());
        {
            const Limit limit(RLIMIT_NOFILE, lowestFreeDescriptor());
            QCOMPARE(askOnce(viewModel), expected(text, u"unknown"_s));
        }
        QCOMPARE(askOnce(viewModel), expected(reachableMark, u"reachable"_s));
    }

    // The limit counts all processes of a user and spares the superuser, so another user has to meet it.
    void noProcessIsLeft()
    {
        const Scene scene;
        QVERIFY(QFile::setPermissions(scene.connector.directory(), QFile::Permissions::fromInt(0x7777)));
        QVERIFY(QFile::setPermissions(scene.connector.program(), QFile::Permissions::fromInt(0x7755)));
        const QString text =
            failureText(u"no further process can be created at the moment"_s, scene.connector.program());
        const Bytes result = inFork([&] {
            constexpr uid_t nobody = 65534;
            const bool isOrdinary = geteuid() != 0 || (setgid(nobody) == 0 && setuid(nobody) == 0);
            ConnectorViewModel viewModel(scene.place(), endlessPause);
            const Limit limit(RLIMIT_NPROC, 0);
            const bool isAsExpected = askOnce(viewModel) == expected(text, u"unknown"_s);
            return isOrdinary && isAsExpected ? "as expected"_ba : viewModel.lastServerOutput().toUtf8();
        });
        QCOMPARE(result, "as expected"_ba);
    }

    // No memory for another process, while this one has what it needs.
    void memoryIsShort()
    {
        const Scene scene;
        const QString text = failureText(u"not enough memory"_s, scene.connector.program());
        const Bytes result = inFork([&] {
            ConnectorViewModel viewModel(scene.place(), endlessPause);
            const bool worksBefore = askOnce(viewModel) == expected(reachableMark, u"reachable"_s);
            Outcome outcome;
            {
                const Limit limit(RLIMIT_AS, 1);
                outcome = askOnce(viewModel);
            }
            const bool worksAfter = askOnce(viewModel) == expected(reachableMark, u"reachable"_s);
            const bool isAsExpected = outcome == expected(text, u"unknown"_s);
            return worksBefore && isAsExpected && worksAfter ? "as expected"_ba : outcome.output.toUtf8();
        });
        QCOMPARE(result, "as expected"_ba);
    }
};

static const TestClass<TestFaultTable> testFaultTable("tst_faulttable");

#include "tst_faulttable.moc"
