#include "support/testprogram.h"
#include "ui/accessibility/accessiblefactory.h"
#include "windowtesting.h"

#include <QtCore/qregularexpression.h>
#include <QtGui/qaccessible.h>
#include <QtQml/qqmlcomponent.h>
#include <QtQml/qqmlengine.h>

#include <memory>

using namespace Qt::StringLiterals;

// Where assistive technologies find the characters of outputs and fields.
class TestAccessibleText : public QObject
{
    Q_OBJECT

    QQmlEngine m_engine;
    std::unique_ptr<TestWindow> m_window;
    QQuickItem *m_item = nullptr;
    QAccessibleTextInterface *m_text = nullptr;

    /// Shows a component, and reads its item or the one that a property of it holds.
    void show(const QByteArray &qml, const char *property = nullptr)
    {
        QQmlComponent component(&m_engine);
        component.setData("import BrindlecoveConnectorGUI\n" + qml, QUrl());
        std::unique_ptr<QObject> object(component.create());
        QVERIFY2(object, qPrintable(component.errorString()));
        m_window = std::make_unique<TestWindow>();
        m_window->setPosition(30, 40);
        auto *item = qobject_cast<QQuickItem *>(object.release());
        item->setParent(m_window.get());
        item->setParentItem(m_window->contentItem());
        QVERIFY(m_window->isReady());
        m_item = property ? item->property(property).value<QQuickItem *>() : item;
        m_text = QAccessible::queryAccessibleInterface(m_item)->textInterface();
        QVERIFY(m_text);
    }

    void showOutput(const QByteArray &source)
    {
        show("OutputText { accessibleTitle: ''; source: '" + source + "'; width: 300; height: 200 }");
    }

    void verifyEachCharacterIsFoundWhereItLies() const
    {
        const QString text = m_text->text(0, m_text->characterCount());
        for (int offset = 0; offset < text.size(); ++offset) {
            const QRect place = m_text->characterRect(offset);
            if (text.at(offset) != u'\n' && text.at(offset) != u'\r') {
                const int middle = place.center().y();
                QCOMPARE(m_text->offsetAtPoint({place.left() + 1, middle}), offset);
                QCOMPARE(m_text->offsetAtPoint(place.center()), offset);
                QCOMPARE(m_text->offsetAtPoint({place.right() - 1, middle}), offset);
            }
            // Nothing lies between a character and the next one of its line.
            const QRect next = m_text->characterRect(offset + 1);
            QVERIFY(next.top() != place.top() || next.left() <= place.right() + 1);
            if (offset > 0 && text.at(offset - 1) == u'\n') {
                QVERIFY(place.top() >= m_text->characterRect(offset - 1).bottom());
            }
        }
    }

private slots:
    void initTestCase()
    {
        m_engine.addImportPath(u":/"_s);
        installAccessibleFactory();
    }

    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void cleanup() { m_window.reset(); }

    void anOutputIsFoundWhereItLies()
    {
        showOutput("one");
        const QPoint origin = m_window->mapToGlobal(m_item->mapToScene({}).toPoint());
        QCOMPARE(QAccessible::queryAccessibleInterface(m_item)->rect(),
                 QRect(origin, m_item->size().toSize()));
    }

    void anOutputIsALeafThatSaysWhatItIs()
    {
        showOutput("one");
        const QAccessibleInterface *output = QAccessible::queryAccessibleInterface(m_item);
        QCOMPARE(output->childCount(), 0);
        QCOMPARE(output->indexOfChild(output), -1);
        const QAccessible::State shown = output->state();
        QVERIFY(shown.selectableText && shown.multiLine && shown.readOnly && shown.focusable);
        QVERIFY(!shown.invisible && !shown.focused && !shown.editable);
        m_item->forceActiveFocus();
        QVERIFY(output->state().focused);
        m_item->setVisible(false);
        QVERIFY(output->state().invisible);
    }

    void everyKindOfLineEndEndsALine()
    {
        showOutput("one\\r\\ntwo\\rthree\\nfour");
        QCOMPARE(m_text->text(0, m_text->characterCount()), u"one\r\ntwo\nthree\nfour"_s);
        verifyEachCharacterIsFoundWhereItLies();
        showOutput("\\rtwo");
        QCOMPARE(m_text->text(0, m_text->characterCount()), u"\ntwo"_s);
    }

    void everyCharacterOfALineThatIsWrappedIsFoundWhereItLies()
    {
        const QByteArray line = QByteArray(R"({"totalEquity":"12.5","coin":"USDT"},)").repeated(3);
        showOutput(line);
        const int count = m_text->characterCount();
        QCOMPARE(count, line.size());
        const auto top = [this](int offset) { return m_text->characterRect(offset).top(); };
        QVERIFY(top(count / 2) > top(0));
        QVERIFY(top(count - 1) > top(count / 2));
        verifyEachCharacterIsFoundWhereItLies();
    }

    void everyCharacterOfAFieldIsFoundWhereItLies_data()
    {
        QTest::addColumn<QByteArray>("type");
        QTest::newRow("plain") << "InputField"_ba;
        QTest::newRow("masked") << "SecretField"_ba;
    }

    void everyCharacterOfAFieldIsFoundWhereItLies()
    {
        QFETCH(const QByteArray, type);
        show(type + " { fieldText: 'iWord'; placeholder: ''; width: 200 }", "input");
        QCOMPARE(m_text->characterCount(), 5);
        verifyEachCharacterIsFoundWhereItLies();
    }

    void aFieldIsEditedByPieces()
    {
        show("InputField { fieldText: 'abcdef'; placeholder: ''; width: 200 }", "input");
        QAccessibleInterface *field = QAccessible::queryAccessibleInterface(m_item);
        QAccessibleEditableTextInterface *edit = field->editableTextInterface();
        const auto text = [this] { return m_text->text(0, m_text->characterCount()); };
        m_text->setSelection(0, 0, 2);
        edit->replaceText(2, 4, u"CDE"_s);
        QCOMPARE(text(), u"abCDEef"_s);
        QCOMPARE(m_text->cursorPosition(), 5);
        edit->deleteText(2, 5);
        QCOMPARE(text(), u"abef"_s);
        edit->insertText(2, u"cd"_s);
        QCOMPARE(text(), u"abcdef"_s);
        edit->replaceText(4, -1, u"!"_s);
        QCOMPARE(text(), u"abcd!"_s);
        edit->deleteText(-7, 700);
        QCOMPARE(text(), QString());
        edit->insertText(-1, u"before"_s);
        field->setText(QAccessible::Value, u"whole"_s);
        field->setText(QAccessible::Name, u"name"_s);
        QCOMPARE(text(), u"whole"_s);
    }

    void thereIsOneSelectionAtMost()
    {
        show("InputField { fieldText: 'abcdef'; placeholder: ''; width: 200 }", "input");
        const auto selection = [this](int index) {
            int start = -1;
            int end = -1;
            m_text->selection(index, &start, &end);
            return QList{start, end};
        };
        m_text->setCursorPosition(3);
        QCOMPARE(m_text->selectionCount(), 0);
        QCOMPARE(selection(0), QList({0, 0}));
        m_text->setSelection(1, 0, 4);
        QCOMPARE(m_text->selectionCount(), 0);
        m_text->setSelection(0, 2, 4);
        QCOMPARE(m_text->selectionCount(), 1);
        QCOMPARE(selection(0), QList({2, 4}));
        QCOMPARE(selection(1), QList({0, 0}));
        m_text->removeSelection(1);
        QCOMPARE(m_text->selectionCount(), 1);
        m_text->removeSelection(0);
        QCOMPARE(m_text->selectionCount(), 0);
        m_text->addSelection(1, 3);
        QCOMPARE(selection(0), QList({1, 3}));
    }

    void aPieceIsBroughtIntoViewByTheCursor()
    {
        show("InputField { fieldText: 'abcdef'; placeholder: ''; width: 200 }", "input");
        m_text->scrollToSubstring(4, 6);
        QCOMPARE(m_text->cursorPosition(), 4);
        m_text->scrollToSubstring(1, 2);
        QCOMPARE(m_text->cursorPosition(), 1);
    }

    void noPieceOfATextLooksDifferent()
    {
        showOutput("one");
        int start = -1;
        int end = -1;
        QCOMPARE(m_text->attributes(2, &start, &end), QString());
        QCOMPARE(QList({start, end}), QList({0, 3}));
    }

    void noCharacterLiesOutside_data()
    {
        QTest::addColumn<QByteArray>("item");
        QTest::addColumn<QByteArray>("property");
        QTest::newRow("output")
            << "OutputText { accessibleTitle: ''; source: 'one\\ntwo'; width: 300; height: 200 }"_ba
            << QByteArray();
        QTest::newRow("field") << "InputField { fieldText: 'one two'; placeholder: ''; width: 200 }"_ba
                               << "input"_ba;
    }

    void noCharacterLiesOutside()
    {
        QFETCH(const QByteArray, item);
        QFETCH(const QByteArray, property);
        show(item, property.isEmpty() ? nullptr : property.constData());
        const QRect last = m_text->characterRect(6);
        QCOMPARE(m_text->offsetAtPoint(last.center() + QPoint(2000, 0)), -1);
        QCOMPARE(m_text->offsetAtPoint(last.center() - QPoint(2000, 0)), -1);
    }

    // Who asks for the place of a range asks for one too many; a document complains of that.
    void beyondTheEndNothingIsAskedOfTheDocument_data() { noCharacterLiesOutside_data(); }

    void beyondTheEndNothingIsAskedOfTheDocument()
    {
        QFETCH(const QByteArray, item);
        QFETCH(const QByteArray, property);
        show(item, property.isEmpty() ? nullptr : property.constData());
        const QRect end = m_text->characterRect(7);
        QVERIFY(end.left() > m_text->characterRect(6).left());
        QVERIFY(!end.isEmpty());
        QCOMPARE(m_text->characterRect(8), end);
        QCOMPARE(m_text->characterRect(INT_MAX), end);
        QCOMPARE(m_text->characterRect(-1), m_text->characterRect(0));
    }
};

static const TestClass<TestAccessibleText> testAccessibleText("tst_accessibletext");

#include "tst_accessibletext.moc"
