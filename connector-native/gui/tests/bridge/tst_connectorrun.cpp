#include "support/testprogram.h"
#include "viewmodeltesting.h"

namespace {

using Store = std::function<void(const QString &)>;
using Run = void (ConnectorViewModel::*)(const QString &, const QStringList &, const Store &);

// The doorway is private, and no button runs it without a completion or from within another one of its
// own choice. Naming a private member is allowed where a template is instantiated explicitly.
void runConnector(ConnectorViewModel &viewModel, const QString &title, const QStringList &arguments,
                  const Store &store);

template <Run Member> struct Doorway
{
    friend void runConnector(ConnectorViewModel &viewModel, const QString &title,
                             const QStringList &arguments, const Store &store)
    {
        (viewModel.*Member)(title, arguments, store);
    }
};

template struct Doorway<&ConnectorViewModel::run>;

} // namespace

class TestConnectorRun : public QObject
{
    Q_OBJECT

private slots:
    void laterRunLiesAboveTheEarlierOne()
    {
        const FakeConnector connector;
        connector.answer(u"a"_s, u"1"_s);
        connector.answer(u"b"_s, u"2"_s);
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        runConnector(viewModel, u"earlier"_s, {u"a"_s}, {});
        runConnector(viewModel, u"later"_s, {u"b"_s}, {});
        QCOMPARE(viewModel.logs()->count(), 2);
        QCOMPARE(viewModel.logs()->at(0).title, u"later"_s);
        QCOMPARE(viewModel.logs()->at(0).output, u"2"_s);
        QCOMPARE(viewModel.logs()->at(1).title, u"earlier"_s);
        QCOMPARE(viewModel.logs()->at(1).output, u"1"_s);
        QVERIFY(viewModel.logs()->at(0).id != viewModel.logs()->at(1).id);
    }

    void withoutCompletionOnlyTheLogGrows()
    {
        const FakeConnector connector;
        connector.answer(u"status"_s, u"connector_health=ready"_s);
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        runConnector(viewModel, u"status"_s, {u"status"_s}, {});
        QCOMPARE(viewModel.logs()->count(), 1);
        QCOMPARE(viewModel.logs()->at(0).output, u"connector_health=ready"_s);
        QCOMPARE(viewModel.connectorStatus(), u"unknown"_s);
        QCOMPARE(viewModel.lastStatusOutput(), QString());
    }

    void completionGetsTheLoggedText()
    {
        const FakeConnector connector;
        connector.answer(u"status"_s, u" text\r\n"_s);
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        QStringList stored;
        runConnector(viewModel, u"status"_s, {u"status"_s}, [&](const QString &text) {
            stored += {text, viewModel.logs()->at(0).output};
        });
        QCOMPARE(stored, QStringList({u" text\r\n"_s, u" text\r\n"_s}));
    }

    void completionsRunInTheOrderOfTheCalls()
    {
        const FakeConnector connector;
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        QStringList order;
        for (const QString &name : {u"a"_s, u"b"_s, u"c"_s}) {
            runConnector(viewModel, name, {name}, [&](const QString &) { order += u"end "_s + name; });
            order += u"returned "_s + name;
        }
        QCOMPARE(order,
                 QStringList({u"end a"_s, u"returned a"_s, u"end b"_s, u"returned b"_s, u"end c"_s,
                              u"returned c"_s}));
    }

    void nestedRunEndsInsideTheOuterOne()
    {
        const FakeConnector connector;
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        QStringList order;
        runConnector(viewModel, u"outer"_s, {u"outer"_s}, [&](const QString &) {
            order += u"outer begins"_s;
            runConnector(viewModel, u"inner"_s, {u"inner"_s}, [&](const QString &) { order += u"inner"_s; });
            order += u"outer ends"_s;
        });
        QCOMPARE(order, QStringList({u"outer begins"_s, u"inner"_s, u"outer ends"_s}));
        QCOMPARE(titlesOldestFirst(viewModel), QStringList({u"outer"_s, u"inner"_s}));
        QCOMPARE(connector.callArguments(), QList({QStringList{u"outer"_s}, QStringList{u"inner"_s}}));
    }

    void outputs_data()
    {
        QTest::addColumn<QByteArray>("lines");
        QTest::addColumn<QString>("text");

        QTest::newRow("nothing") << ":"_ba << QString();
        QTest::newRow("standard error joins in the order of writing")
            << "echo 1; echo 2 >&2; echo 3; echo 4 >&2"_ba << u"1\n2\n3\n4\n"_s;
        QTest::newRow("standard error alone") << "echo bad >&2"_ba << u"bad\n"_s;
        QTest::newRow("failure status is not looked at") << "printf done; exit 7"_ba << u"done"_s;
        QTest::newRow("death by a signal is not looked at") << "printf done; kill -9 $$"_ba << u"done"_s;
        QTest::newRow("not trimmed") << R"(printf ' \n a \r\n\n ')"_ba << u" \n a \r\n\n "_s;
        QTest::newRow("ill-formed bytes are replaced")
            << R"(printf 'a\377b\303\050c\342\202')"_ba << u"a\uFFFDb\uFFFD(c\uFFFD"_s;
        QTest::newRow("Unicode") << R"(printf '\303\274\360\237\230\200')"_ba << u"ü😀"_s;
        QTest::newRow("byte-order mark is kept") << R"(printf '\357\273\277a')"_ba << u"\uFEFFa"_s;
        QTest::newRow("NUL is kept") << R"(printf 'a\000b')"_ba << u"a\0b"_s;
    }

    void outputs()
    {
        QFETCH(QByteArray, lines);
        const FakeConnector connector;
        connector.act(u"status"_s, lines);
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        QStringList stored;
        runConnector(viewModel, u"status"_s, {u"status"_s}, [&](const QString &text) { stored += text; });
        QCOMPARE(viewModel.logs()->count(), 1);
        QTEST(viewModel.logs()->at(0).output, "text");
        QCOMPARE(stored, QStringList(viewModel.logs()->at(0).output));
    }

    void argumentsReachTheChildUnchanged_data()
    {
        QTest::addColumn<QStringList>("arguments");

        QTest::newRow("the command alone") << QStringList{u"status"_s};
        QTest::newRow("blanks") << QStringList{u"claim-token"_s, u"  a  b\t"_s, u" "_s};
        QTest::newRow("empty") << QStringList{u"validate"_s, u""_s, u""_s, u"last"_s};
        QTest::newRow("empty at the end") << QStringList{u"validate"_s, u""_s};
        QTest::newRow("quotes") << QStringList{u"claim-token"_s, u"'a\"b'\\"_s, u"`id`"_s};
        QTest::newRow("shell syntax") << QStringList{u"claim-token"_s, u"$HOME; $(id) | * > x &"_s};
        QTest::newRow("leading dashes") << QStringList{u"claim-token"_s, u"-n"_s, u"--"_s, u"--help"_s};
        QTest::newRow("Unicode") << QStringList{u"claim-token"_s, u"ü €\u00A0😀"_s, u"e\u0301"_s};
        QTest::newRow("line feeds") << QStringList{u"claim-token"_s, u"a\nb\r\n"_s};
        QTest::newRow("long") << QStringList{u"claim-token"_s, QString(100'000, u'x')};
    }

    void argumentsReachTheChildUnchanged()
    {
        QFETCH(QStringList, arguments);
        const FakeConnector connector;
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        runConnector(viewModel, u"title"_s, arguments, {});
        QCOMPARE(connector.callArguments(), QList({arguments}));
    }

    void titlesAreOnlyLogged_data()
    {
        QTest::addColumn<QString>("title");

        QTest::newRow("empty") << QString();
        QTest::newRow("blanks") << u"  two  words "_s;
        QTest::newRow("quotes") << u"'a\"b'"_s;
        QTest::newRow("leading dash") << u"-n"_s;
        QTest::newRow("Unicode") << u"balance ü😀"_s;
        QTest::newRow("NUL") << u"a\0b"_s;
        QTest::newRow("a command of its own") << u"claim-token"_s;
    }

    void titlesAreOnlyLogged()
    {
        QFETCH(QString, title);
        const FakeConnector connector;
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        runConnector(viewModel, title, {u"status"_s}, {});
        QCOMPARE(viewModel.logs()->at(0).title, title);
        QCOMPARE(viewModel.logs()->at(0).output, QString());
        QCOMPARE(connector.callArguments(), QList({QStringList{u"status"_s}}));
    }

    void launchFailureIsLoggedAndHandedOn()
    {
        const QTemporaryDir home;
        ConnectorViewModel viewModel(placeWithoutConnector(home.path()), endlessPause);
        QStringList stored;
        runConnector(viewModel, u"status"_s, {u"status"_s}, [&](const QString &text) { stored += text; });
        QCOMPARE(stored, QStringList(missingConnectorText(home.path())));
        QVERIFY(stored.first().startsWith(u"failed to run connector: "_s));
        QVERIFY(stored.first().split(u'\n').last().startsWith(u"resolved_path="_s));
        QCOMPARE(viewModel.logs()->count(), 1);
        QCOMPARE(viewModel.logs()->at(0).title, u"status"_s);
        QCOMPARE(viewModel.logs()->at(0).output, stored.first());
    }

    void nulInAnArgumentIsALaunchFailure()
    {
        const FakeConnector connector;
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        QStringList stored;
        runConnector(viewModel, u"claim-token"_s, {u"claim-token"_s, u"a\0b"_s},
                     [&](const QString &text) { stored += text; });
        const QString text =
            failureText(u"the path or an argument contains a NUL character"_s, connector.program());
        QCOMPARE(stored, QStringList(text));
        QCOMPARE(viewModel.logs()->count(), 1);
        QCOMPARE(viewModel.logs()->at(0).output, text);
        QCOMPARE(connector.callArguments(), QList<QStringList>());
    }

    void unusableConnectorIsALaunchFailure()
    {
        const FakeConnector connector;
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        QFile program(connector.program());
        QVERIFY(program.open(QIODevice::WriteOnly));
        QVERIFY(program.write("#!/nowhere/interpreter\n") > 0);
        program.close();
        runConnector(viewModel, u"status"_s, {u"status"_s}, {});
        QCOMPARE(viewModel.logs()->at(0).output,
                 failureText(u"the interpreter or loader that the file asks for does not exist"_s,
                             connector.program()));
    }

    void aPathThatIsNoUtf8IsLoggedWithRepair()
    {
        ProgramPlace place = placeWithoutConnector(u"/nowhere"_s);
        place.home = "/nowhere/\xff";
        ConnectorViewModel viewModel(place, endlessPause);
        runConnector(viewModel, u"status"_s, {u"status"_s}, {});
        QCOMPARE(viewModel.logs()->at(0).output, missingConnectorText(u"/nowhere/\uFFFD"_s));
    }

    void connectorIsLookedUpAtEachRun()
    {
        const FakeConnector connector;
        connector.answer(u"status"_s, u"found"_s);
        const QString hidden = connector.program() + u".hidden"_s;
        ConnectorViewModel viewModel(connector.place(), endlessPause);
        QVERIFY(QFile::rename(connector.program(), hidden));
        runConnector(viewModel, u"status"_s, {u"status"_s}, {});
        QVERIFY(QFile::rename(hidden, connector.program()));
        runConnector(viewModel, u"status"_s, {u"status"_s}, {});
        QCOMPARE(viewModel.logs()->at(1).output,
                 missingConnectorText(QFile::decodeName(connector.place().home)));
        QCOMPARE(viewModel.logs()->at(0).output, u"found"_s);
    }
};

static const TestClass<TestConnectorRun> testConnectorRun("tst_connectorrun");

#include "tst_connectorrun.moc"
