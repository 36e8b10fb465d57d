#include "exchanges/keyvaluelines.h"
#include "support/testprogram.h"

using namespace Qt::StringLiterals;

class TestKeyValueLines : public QObject
{
    Q_OBJECT

private slots:
    void findsValue_data()
    {
        QTest::addColumn<QString>("output");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("value");

        const QString three = u"a=1\nkey=\nkey=2"_s;
        QTest::newRow("first matching line wins though empty") << three << u"key"_s << u""_s;
        QTest::newRow("line before the first match") << three << u"a"_s << u"1"_s;
        QTest::newRow("first of two filled lines") << u"key=1\nkey=2"_s << u"key"_s << u"1"_s;
        QTest::newRow("blanks are kept") << u"key=  v "_s << u"key"_s << u"  v "_s;
        QTest::newRow("tabs are kept") << u"key=\tv\t\n"_s << u"key"_s << u"\tv\t"_s;
        QTest::newRow("longer key before it is passed over") << u"xkey=1\nkey=2"_s << u"key"_s << u"2"_s;
        QTest::newRow("longer key with the same start is passed over")
            << u"key2=1\nkey=2"_s << u"key"_s << u"2"_s;
        QTest::newRow("indented line is passed over") << u" key=1\nkey=2"_s << u"key"_s << u"2"_s;
        QTest::newRow("other case is passed over") << u"KEY=1\nkey=2"_s << u"key"_s << u"2"_s;
        QTest::newRow("further equals signs belong to the value") << u"key=a=b=="_s << u"key"_s << u"a=b=="_s;
        QTest::newRow("last line without line feed") << u"a=1\nkey=2"_s << u"key"_s << u"2"_s;
        QTest::newRow("line feed at the end is no part of it") << u"key=2\n"_s << u"key"_s << u"2"_s;
        QTest::newRow("empty lines are passed over") << u"\n\n\nkey=2\n\n"_s << u"key"_s << u"2"_s;
        QTest::newRow("empty value before a line feed") << u"key=\n"_s << u"key"_s << u""_s;
        QTest::newRow("CR LF does not end a line") << u"key=1\r\na=2"_s << u"key"_s << u"1\r\na=2"_s;
        QTest::newRow("CR LF at the end stays") << u"key=1\r\n"_s << u"key"_s << u"1\r\n"_s;
        QTest::newRow("lone CR does not end a line") << u"key=1\ra=2"_s << u"key"_s << u"1\ra=2"_s;
        QTest::newRow("LF ends a line that began with CR LF") << u"\r\na=1\nkey=2"_s << u"key"_s << u"2"_s;
        QTest::newRow("LF CR LF ends a line at the first of them")
            << u"key=1\n\r\na=2"_s << u"key"_s << u"1"_s;
        QTest::newRow("CR CR LF does not end a line") << u"key=1\r\r\na=2"_s << u"key"_s << u"1\r\r\na=2"_s;
        QTest::newRow("CR LF LF ends a line at the last of them")
            << u"key=1\r\n\na=2"_s << u"key"_s << u"1\r\n"_s;
        QTest::newRow("other line separators do not end a line")
            << u"key=1\v\f\u0085\u2028\u2029a=2"_s << u"key"_s << u"1\v\f\u0085\u2028\u2029a=2"_s;
        QTest::newRow("NUL is kept") << u"key=a\0b\nc=1"_s << u"key"_s << u"a\0b"_s;
        QTest::newRow("characters outside the BMP are kept")
            << u"key=\U0001F511\nc=1"_s << u"key"_s << u"\U0001F511"_s;
        QTest::newRow("replacement characters are kept") << u"key=\uFFFD"_s << u"key"_s << u"\uFFFD"_s;
    }

    void findsValue()
    {
        QFETCH(const QString, output);
        QFETCH(const QString, key);
        QFETCH(const QString, value);

        const std::optional<QString> found = extractValue(output, key);
        QVERIFY(found.has_value());
        QCOMPARE(*found, value);
    }

    void findsNothing_data()
    {
        QTest::addColumn<QString>("output");

        QTest::newRow("empty output") << u""_s;
        QTest::newRow("only line feeds") << u"\n\n"_s;
        QTest::newRow("other keys only") << u"a=1\nb=2"_s;
        QTest::newRow("key not at the start of its line") << u"xkey=1"_s;
        QTest::newRow("key without equals sign") << u"key"_s;
        QTest::newRow("blank before the equals sign") << u"key =1"_s;
        QTest::newRow("other case") << u"Key=1"_s;
        QTest::newRow("key after CR LF only") << u"a=1\r\nkey=2"_s;
        QTest::newRow("key after a lone CR only") << u"a=1\rkey=2"_s;
        QTest::newRow("key after a first CR LF") << u"\r\nkey=2"_s;
        QTest::newRow("byte-order mark before the key") << u"\uFEFFkey=2"_s;
    }

    void findsNothing()
    {
        QFETCH(const QString, output);

        QVERIFY(!extractValue(output, u"key"_s).has_value());
    }

    void readsLongOutput()
    {
        const QString filler = QString(1 << 20, u'x');
        const QString pairs = u"\r\n"_s.repeated(1 << 19);

        QCOMPARE(extractValue(filler + u"\nkey=1"_s, u"key"_s), u"1"_s);
        QCOMPARE(extractValue(pairs + u"\nkey=1"_s, u"key"_s), u"1"_s);
        QCOMPARE(extractValue(u"\n"_s.repeated(1 << 20) + u"key=1"_s, u"key"_s), u"1"_s);
        QCOMPARE(extractValue(u"key="_s + filler, u"key"_s), filler);
    }
};

static const TestClass<TestKeyValueLines> testKeyValueLines("tst_keyvaluelines");

#include "tst_keyvaluelines.moc"
