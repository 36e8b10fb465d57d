#include "support/testprogram.h"
#include "ui/output/longtext.h"

#include <QtGui/qtextdocument.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int Lines = 1000;

QString linesEndedBy(const QString &end)
{
    return (u"fifteen letters"_s + end).repeated(Lines);
}

} // namespace

// What an edit is given to show of a long output.
class TestLongText : public QObject
{
    Q_OBJECT

private slots:
    void shortTextsStayAsTheyAre()
    {
        const auto text = u"one\ntwo\r\nthree\r"_s;
        QVERIFY(!LongText::isLong(text));
        QCOMPARE(LongText::inFewParagraphs(text), text);
    }

    void longTextsKeepEveryPosition_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("line feeds") << linesEndedBy(u"\n"_s);
        QTest::newRow("pairs") << linesEndedBy(u"\r\n"_s);
        QTest::newRow("carriage returns") << linesEndedBy(u"\r"_s);
        QTest::newRow("all kinds") << linesEndedBy(u"\r\n\n\r\r\r\n"_s);
        QTest::newRow("without an end") << linesEndedBy(u"\n"_s) + u"last"_s;
        QTest::newRow("one line") << linesEndedBy(u" "_s);
    }

    void longTextsKeepEveryPosition()
    {
        QFETCH(const QString, text);
        QVERIFY(LongText::isLong(text));
        QTextDocument plain(text);
        const QTextDocument joined(LongText::inFewParagraphs(text));
        const auto withLineFeeds = [](const QTextDocument &document) {
            return document.toRawText()
                .replace(QChar::ParagraphSeparator, u'\n')
                .replace(QChar::LineSeparator, u'\n');
        };
        QCOMPARE(withLineFeeds(joined), withLineFeeds(plain));
    }

    void longTextsHaveFewParagraphs()
    {
        const QTextDocument joined(LongText::inFewParagraphs(linesEndedBy(u"\n"_s)));
        QVERIFY2(joined.blockCount() <= Lines / 50, qPrintable(QString::number(joined.blockCount())));
    }
};

static const TestClass<TestLongText> registered("tst_longtext");

#include "tst_longtext.moc"
