#include "controls/fieldtest.h"
#include "shownitems.h"
#include "support/testprogram.h"
#include "typing.h"
#include "ui/accessibility/accessiblefactory.h"

#include <QtCore/qmimedata.h>
#include <QtGui/qaccessible.h>
#include <QtGui/qevent.h>
#include <QtTest/qsignalspy.h>

using namespace Qt::StringLiterals;

// What a field takes in when it is given more than one line, whatever way.
class TestSingleLine : public FieldTest
{
    Q_OBJECT

    using Way = void (TestSingleLine::*)(QQuickItem *input, const QString &text);

    void pasteByKey(QQuickItem *, const QString &text)
    {
        setClipboard(text);
        QTest::keySequence(window(), QKeySequence::Paste);
    }

    void pasteByMenu(QQuickItem *, const QString &text)
    {
        setClipboard(text);
        QTest::keyClick(window(), Qt::Key_Menu);
        QTest::keyClick(window(), Qt::Key_P);
        QTest::keyClick(window(), Qt::Key_Return);
    }

    void commit(QQuickItem *input, const QString &text)
    {
        QInputMethodEvent event;
        event.setCommitString(text);
        QCoreApplication::sendEvent(input, &event);
    }

    void writeByAssistiveTechnology(QQuickItem *input, const QString &text)
    {
        QAccessible::queryAccessibleInterface(input)->editableTextInterface()->insertText(
            input->property("cursorPosition").toInt(), text);
    }

    void drop(QQuickItem *input, const QString &text)
    {
        QMimeData data;
        data.setText(text);
        const QPoint place = middleOf(input);
        QDragEnterEvent enter(place, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(window(), &enter);
        QVERIFY(enter.isAccepted());
        QDropEvent drop(place, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(window(), &drop);
        QVERIFY(drop.isAccepted());
        QCOMPARE(drop.dropAction(), Qt::CopyAction);
        QVERIFY(input->hasActiveFocus());
    }

    static void addWays()
    {
        QTest::addColumn<QByteArray>("type");
        QTest::addColumn<Way>("give");
        for (const char *type : {"plain", "masked"}) {
            QTest::addRow("%s, pasted by key", type) << QByteArray(type) << &TestSingleLine::pasteByKey;
            QTest::addRow("%s, pasted by menu", type) << QByteArray(type) << &TestSingleLine::pasteByMenu;
            QTest::addRow("%s, committed", type) << QByteArray(type) << &TestSingleLine::commit;
            QTest::addRow("%s, written by an assistive technology", type)
                << QByteArray(type) << &TestSingleLine::writeByAssistiveTechnology;
            QTest::addRow("%s, dropped", type) << QByteArray(type) << &TestSingleLine::drop;
        }
    }

private slots:
    void initTestCase()
    {
        FieldTest::initTestCase();
        installAccessibleFactory();
    }

    void lineBreaksAreLeftOut_data() { addWays(); }

    void lineBreaksAreLeftOut()
    {
        QFETCH(const QByteArray, type);
        QFETCH(const Way, give);
        QQuickItem *text = input(type.constData());
        text->forceActiveFocus();
        const QSignalSpy edits(field(type.constData()), SIGNAL(edited(QString)));
        (this->*give)(text, u"\nbt\r\n7f\r3a\v-\f91\u0085c2\u2028-5\u2029d\n\n"_s);
        QCOMPARE(textOf(text), u"bt7f3a-91c2-5d"_s);
        QCOMPARE(storedOf(type.constData()), u"bt7f3a-91c2-5d"_s);
        QCOMPARE(edits.count(), 1);
    }

    void nothingElseIs_data() { addWays(); }

    void nothingElseIs()
    {
        QFETCH(const QByteArray, type);
        QFETCH(const Way, give);
        QQuickItem *text = input(type.constData());
        text->forceActiveFocus();
        const QString odd = u" \ta\u00A0b\u200Bc\u001B \U0001F511ä "_s;
        (this->*give)(text, odd);
        QCOMPARE(textOf(text), odd);
        QCOMPARE(storedOf(type.constData()), odd);
        (this->*give)(text, u"\n"_s);
        QCOMPARE(storedOf(type.constData()), odd);
    }

    void aSelectionIsReplaced_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("one line") << u"XY"_s;
        QTest::newRow("two lines") << u"X\nY"_s;
    }

    void aSelectionIsReplaced()
    {
        QFETCH(const QString, text);
        QQuickItem *plain = input("plain");
        fill(plain, u"abcdef"_s, 1, 4);
        pasteByKey(plain, text);
        QCOMPARE(textOf(plain), u"aXYef"_s);
        QTest::keyClick(window(), Qt::Key_Z);
        QCOMPARE(textOf(plain), u"aXYzef"_s);
        for (const QString &before : {u"aXYef"_s, u"abcdef"_s, QString()}) {
            QTest::keySequence(window(), QKeySequence::Undo);
            QCOMPARE(textOf(plain), before);
        }
    }

    // However many lines it had, and whatever is typed around it.
    void aPasteIsUndoneInOneStep_data() { aSelectionIsReplaced_data(); }

    void aPasteIsUndoneInOneStep()
    {
        QFETCH(const QString, text);
        QQuickItem *plain = input("plain");
        fill(plain, u"a"_s, 1, 1);
        pasteByKey(plain, text);
        typeText(window(), u"cd"_s);
        QCOMPARE(textOf(plain), u"aXYcd"_s);
        for (const QString &before : {u"aXY"_s, u"a"_s, QString()}) {
            QTest::keySequence(window(), QKeySequence::Undo);
            QCOMPARE(textOf(plain), before);
            QCOMPARE(storedOf("plain"), before);
        }
        for (const QString &after : {u"a"_s, u"aXY"_s, u"aXYcd"_s}) {
            QTest::keySequence(window(), QKeySequence::Redo);
            QCOMPARE(textOf(plain), after);
        }
    }

    void aPasteBehindACutIsUndoneAlone()
    {
        QQuickItem *plain = input("plain");
        fill(plain, u"abc"_s, 0, 2);
        QTest::keySequence(window(), QKeySequence::Cut);
        pasteByKey(plain, u"X\nY"_s);
        QCOMPARE(textOf(plain), u"XYc"_s);
        for (const QString &before : {u"c"_s, u"abc"_s}) {
            QTest::keySequence(window(), QKeySequence::Undo);
            QCOMPARE(textOf(plain), before);
        }
    }

    void nothingButLineBreaksLeavesTheSelection()
    {
        QQuickItem *plain = input("plain");
        fill(plain, u"abcdef"_s, 1, 4);
        pasteByKey(plain, u"\r\n\n"_s);
        QCOMPARE(textOf(plain), u"abcdef"_s);
        QCOMPARE(selectionOf(plain), u"bcd"_s);
    }

    void aDropGoesWhereItIsDropped()
    {
        QQuickItem *plain = input("plain");
        fill(plain, u"ab"_s, 0, 2);
        drop(plain, u"1\n2"_s);
        QCOMPARE(textOf(plain), u"ab12"_s);
        QMimeData picture;
        picture.setData(u"image/png"_s, "no text");
        QDragEnterEvent enter(middleOf(plain), Qt::CopyAction, &picture, Qt::LeftButton, {});
        QCoreApplication::sendEvent(window(), &enter);
        QVERIFY(!enter.isAccepted());
    }

    void noLengthIsCut_data()
    {
        QTest::addColumn<QByteArray>("type");
        QTest::newRow("plain") << QByteArray("plain");
        QTest::newRow("masked") << QByteArray("masked");
    }

    void noLengthIsCut()
    {
        QFETCH(const QByteArray, type);
        const QString longText(70'000, u'x');
        QQuickItem *text = input(type.constData());
        text->forceActiveFocus();
        pasteByKey(text, longText);
        QCOMPARE(storedOf(type.constData()), longText);
        QTest::keyClick(window(), Qt::Key_Y);
        QCOMPARE(storedOf(type.constData()), longText + u'y');
    }
};

static const TestClass<TestSingleLine> testSingleLine("tst_singleline");

#include "tst_singleline.moc"
