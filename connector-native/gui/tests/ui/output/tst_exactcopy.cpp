#include "support/testprogram.h"
#include "ui/output/exactcopy.h"

#include <QtGui/qclipboard.h>
#include <QtGui/qevent.h>
#include <QtGui/qguiapplication.h>
#include <QtGui/qtextcursor.h>
#include <QtGui/qtextdocument.h>
#include <QtGui/qtextdocumentfragment.h>

using namespace Qt::StringLiterals;

namespace {

int documentLength(const QString &text)
{
    QTextDocument document;
    document.setPlainText(text);
    return document.characterCount() - 1;
}

// For each position of a document made from the text, the last place of the text that lies there: a document
// made from a beginning of the text ends at the same position.
QList<qsizetype> placesInSource(const QString &text)
{
    QList<qsizetype> places(documentLength(text) + 1);
    for (qsizetype place = 0; place <= text.size(); ++place) {
        places[documentLength(text.first(place))] = place;
    }
    return places;
}

// What the clipboard holds after the keys for copying have been pressed in an edit.
QString copied(const QString &source, int selectionStart, int selectionEnd)
{
    QQuickItem edit;
    edit.setProperty("selectionStart", selectionStart);
    edit.setProperty("selectionEnd", selectionEnd);
    ExactCopy copy;
    copy.setProperty("source", source);
    copy.setItem(&edit);

    QGuiApplication::clipboard()->setText(u"before"_s);
    QKeyEvent press(QEvent::KeyPress, Qt::Key_C, Qt::ControlModifier);
    QCoreApplication::sendEvent(&edit, &press);
    return QGuiApplication::clipboard()->text();
}

} // namespace

class TestExactCopy : public QObject
{
    Q_OBJECT

private slots:
    void everySelectionGivesWhatItCovers_data()
    {
        QTest::addColumn<QString>("source");

        const QList<std::pair<const char *, QString>> specials{
            {"line feed", u"\n"_s},
            {"CR LF", u"\r\n"_s},
            {"lone CR", u"\r"_s},
            {"LF CR", u"\n\r"_s},
            {"CR CR LF", u"\r\r\n"_s},
            {"no-break space", u"\u00a0"_s},
            {"line separator", u"\u2028"_s},
            {"paragraph separator", u"\u2029"_s},
            {"NUL", QString(QChar(u'\0'))},
            {"surrogate pair", u"\U0001F40B"_s},
            {"lone high surrogate", QString(QChar(0xd83d))},
            {"lone low surrogate", QString(QChar(0xdc0b))},
            {"combining accent", u"e\u0301"_s},
            {"tab", u"\t"_s},
            {"frame characters", QString(QChar(0xfdd0)) + QChar(0xfdd1)},
            {"byte-order mark", u"\ufeff"_s},
            {"object replacement", u"\ufffc"_s},
        };
        QTest::newRow("empty") << QString();
        QString all;
        for (const auto &[name, special] : specials) {
            QTest::addRow("%s alone", name) << special;
            QTest::addRow("%s first", name) << special + u"ab"_s;
            QTest::addRow("%s in the middle", name) << u"a"_s + special + u"b"_s;
            QTest::addRow("%s last", name) << u"ab"_s + special;
            QTest::addRow("%s twice", name) << u"a"_s + special + special + u"b"_s;
            all += special;
        }
        QTest::newRow("everything in a row") << all;
    }

    void everySelectionGivesWhatItCovers()
    {
        QFETCH(const QString, source);
        const QList<qsizetype> places = placesInSource(source);
        for (qsizetype start = 0; start < places.size(); ++start) {
            for (qsizetype end = start; end < places.size(); ++end) {
                QCOMPARE(selectedSource(source, start, end),
                         source.sliced(places[start], places[end] - places[start]));
            }
        }
    }

    void aSelectionKeepsWhatADocumentWouldChange()
    {
        const QString source = u"a\u00a0b\r\nc\rd"_s;
        QTextDocument document;
        document.setPlainText(source);
        QTextCursor cursor(&document);
        cursor.select(QTextCursor::Document);
        QVERIFY(cursor.selection().toPlainText() != source);
        QCOMPARE(selectedSource(source, cursor.selectionStart(), cursor.selectionEnd()), source);
    }

    void copyReachesTheClipboard()
    {
        QCOMPARE(copied(u"one\r\ntwo\u00a0three"_s, 2, 8), u"e\r\ntwo\u00a0"_s);
    }

    void withoutASelectionTheClipboardStays() { QCOMPARE(copied(u"one"_s, 2, 2), u"before"_s); }
};

static const TestClass<TestExactCopy> registered("tst_exactcopy");

#include "tst_exactcopy.moc"
