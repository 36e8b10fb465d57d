#include "support/testprogram.h"
#include "windowtesting.h"

#include <QtGui/qevent.h>
#include <QtGui/qinputmethod.h>
#include <QtQml/qqmlcomponent.h>
#include <QtQml/qqmlengine.h>

#include <memory>

using namespace Qt::StringLiterals;

// What an input method learns of the fields of the window, as it asks the one that has the focus.
class TestSecretGuard : public QObject
{
    Q_OBJECT

    QQmlEngine m_engine;
    std::unique_ptr<TestWindow> m_window;

    // A focused field that holds "hemlig", of which "ml" is selected, with the cursor behind that.
    void show(const QByteArray &type)
    {
        QQmlComponent component(&m_engine);
        component.setData("import BrindlecoveConnectorGUI\n" + type
                              + " { fieldText: 'hemlig'; placeholder: 'API secret'; width: 200 }",
                          QUrl());
        std::unique_ptr<QObject> field(component.create());
        QVERIFY2(field, qPrintable(component.errorString()));
        m_window = std::make_unique<TestWindow>();
        auto *item = qobject_cast<QQuickItem *>(field.release());
        item->setParent(m_window.get());
        item->setParentItem(m_window->contentItem());
        QVERIFY(m_window->isReady());
        auto *input = item->property("input").value<QQuickItem *>();
        QVERIFY(input);
        input->forceActiveFocus();
        QVERIFY(QMetaObject::invokeMethod(input, "select", Q_ARG(int, 2), Q_ARG(int, 4)));
        QCOMPARE(QGuiApplication::focusObject(), input);
    }

    [[nodiscard]] static QVariant answer(Qt::InputMethodQuery question)
    {
        QInputMethodQueryEvent query(question);
        QCoreApplication::sendEvent(QGuiApplication::focusObject(), &query);
        return query.value(question);
    }

private slots:
    void initTestCase() { m_engine.addImportPath(u":/"_s); }

    void aMaskedFieldTellsBullets_data()
    {
        QTest::addColumn<int>("question");
        QTest::addColumn<QString>("told");
        QTest::newRow("surrounding text") << int(Qt::ImSurroundingText) << u"••••••"_s;
        QTest::newRow("selection") << int(Qt::ImCurrentSelection) << u"••"_s;
        QTest::newRow("text before the cursor") << int(Qt::ImTextBeforeCursor) << u"••••"_s;
        QTest::newRow("text after the cursor") << int(Qt::ImTextAfterCursor) << u"••"_s;
    }

    void aMaskedFieldTellsBullets()
    {
        QFETCH(const int, question);
        QFETCH(const QString, told);
        show("SecretField");
        QCOMPARE(answer(Qt::InputMethodQuery(question)).toString(), told);
        // As often as it is asked.
        QCOMPARE(answer(Qt::InputMethodQuery(question)).toString(), told);
    }

    void aPlainFieldTellsItsText()
    {
        show("InputField");
        QCOMPARE(answer(Qt::ImSurroundingText).toString(), u"hemlig"_s);
        QCOMPARE(answer(Qt::ImCurrentSelection).toString(), u"ml"_s);
    }

    void allQuestionsAtOnceAreAnsweredTheSame()
    {
        show("SecretField");
        QInputMethodQueryEvent query(Qt::ImQueryAll);
        QCoreApplication::sendEvent(QGuiApplication::focusObject(), &query);
        for (unsigned bit = 0; bit < 32; ++bit) {
            const QVariant value = query.value(Qt::InputMethodQuery(1U << bit));
            QVERIFY2(!value.toString().contains(u"ml"_s), qPrintable(QString::number(bit)));
        }
        QCOMPARE(query.value(Qt::ImCursorPosition).toInt(), 4);
        QCOMPARE(query.value(Qt::ImAnchorPosition).toInt(), 2);
        QVERIFY(query.value(Qt::ImEnabled).toBool());
    }

    void aMaskedFieldStillTakesWhatAnInputMethodCommits()
    {
        show("SecretField");
        QInputMethodEvent commit;
        commit.setCommitString(u"钥匙"_s);
        QCoreApplication::sendEvent(QGuiApplication::focusObject(), &commit);
        QCOMPARE(QGuiApplication::focusObject()->property("text").toString(), u"he钥匙ig"_s);
        QCOMPARE(answer(Qt::ImSurroundingText).toString(), u"••••••"_s);
    }

    void anInputMethodIsToldTheTextIsSecret()
    {
        show("SecretField");
        const auto hints = Qt::InputMethodHints(answer(Qt::ImHints).toInt());
        QVERIFY(hints.testFlag(Qt::ImhHiddenText));
        QVERIFY(hints.testFlag(Qt::ImhSensitiveData));
        QVERIFY(hints.testFlag(Qt::ImhNoPredictiveText));
    }

    void cleanup() { m_window.reset(); }
};

static const TestClass<TestSecretGuard> testSecretGuard("tst_secretguard");

#include "tst_secretguard.moc"
