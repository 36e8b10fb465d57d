#include "bridge/connectorviewmodel.h"
#include "support/fakeconnector.h"
#include "support/testprogram.h"
#include "typing.h"

#include <QtGui/qclipboard.h>
#include <QtGui/qevent.h>
#include <QtGui/qguiapplication.h>
#include <QtQml/qqmlapplicationengine.h>
#include <QtQuick/qquickitem.h>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

constexpr std::array modifiers{Qt::KeyboardModifiers(),
                               Qt::KeyboardModifiers(Qt::ShiftModifier),
                               Qt::KeyboardModifiers(Qt::ControlModifier),
                               Qt::KeyboardModifiers(Qt::AltModifier),
                               Qt::KeyboardModifiers(Qt::MetaModifier),
                               Qt::ControlModifier | Qt::ShiftModifier,
                               Qt::ControlModifier | Qt::AltModifier};

bool closesWindow(QKeyCombination keys)
{
    const QKeyEvent event(QEvent::KeyPress, keys.key(), keys.keyboardModifiers());
    // Not every platform has a sequence of its own for quitting.
    return event.matches(QKeySequence::Close) || keys == QKeyCombination(Qt::ControlModifier, Qt::Key_Q);
}

} // namespace

// What keys and the clipboard do in the fields of the whole window, down to the connector.
class TestFieldKeys : public QObject
{
    Q_OBJECT

    FakeConnector m_connector;
    std::unique_ptr<QQmlApplicationEngine> m_engine;
    QQuickWindow *m_window = nullptr;
    ConnectorViewModel *m_viewModel = nullptr;

    [[nodiscard]] QQuickItem *itemWith(const char *property, const QString &value) const
    {
        QList<QQuickItem *> all = m_window->contentItem()->childItems();
        for (qsizetype i = 0; i < all.size(); ++i) {
            if (all.at(i)->property(property).toString() == value) {
                return all.at(i);
            }
            all.append(all.at(i)->childItems());
        }
        return nullptr;
    }

    [[nodiscard]] QQuickItem *input(const QString &placeholder) const
    {
        const QQuickItem *field = itemWith("placeholder", placeholder);
        return field ? field->property("input").value<QQuickItem *>() : nullptr;
    }

    void paste(const QString &placeholder, const QString &text) const
    {
        QVERIFY(input(placeholder));
        input(placeholder)->forceActiveFocus();
        QGuiApplication::clipboard()->setText(text);
        QTest::keySequence(m_window, QKeySequence::Paste);
    }

    // Any key, also one that Qt Test has no character for.
    void press(int key, Qt::KeyboardModifiers modifiers) const
    {
        const QString text = key < Qt::Key_Escape && !modifiers ? QChar(key).toLower() : QString();
        QTest::simulateEvent(m_window, true, key, modifiers, text, false);
        QTest::simulateEvent(m_window, false, key, modifiers, text, false);
    }

    [[nodiscard]] QList<QStringList> callsAfterPressing(const QString &title)
    {
        m_connector.reset();
        QMetaObject::invokeMethod(itemWith("title", title), "trigger");
        m_viewModel->stopStatusPolling();
        return m_connector.callArguments();
    }

private slots:
    void initTestCase() { m_connector.steerBesideProgram(); }

    void init()
    {
        m_connector.reset();
        m_engine = std::make_unique<QQmlApplicationEngine>();
        m_engine->addImportPath(u":/"_s);
        m_engine->load(QUrl(u"qrc:/BrindlecoveConnectorGUI/ui/BrindlecoveConnectorGUIApp.qml"_s));
        m_window = qobject_cast<QQuickWindow *>(m_engine->rootObjects().value(0));
        QVERIFY(m_window);
        m_viewModel = m_window->findChild<ConnectorViewModel *>();
        QVERIFY(QTest::qWaitForWindowActive(m_window));
        QTRY_COMPARE(m_connector.calls().size(), 9);
        // The one with a passphrase.
        m_viewModel->setSelectedExchangeId(u"okx"_s);
        QTRY_VERIFY(input(u"Passphrase"_s));
    }

    void cleanup() { m_engine.reset(); }

    void noKeyInAFieldRunsACommand_data()
    {
        QTest::addColumn<QString>("placeholder");
        for (const QString &field : {u"Bind token from terminal.brindlecove.example"_s, u"API key"_s,
                                     u"API secret"_s, u"Passphrase"_s}) {
            QTest::newRow(qPrintable(field)) << field;
        }
    }

    void noKeyInAFieldRunsACommand()
    {
        QFETCH(const QString, placeholder);
        QQuickItem *field = input(placeholder);
        QVERIFY(field);
        field->forceActiveFocus();
        typeText(m_window, u"abc"_s);
        m_connector.reset();

        QList<int> keys{Qt::Key_Menu, Qt::Key_Help, Qt::Key_Back, Qt::Key_Refresh, Qt::Key_Select};
        const auto addRange = [&keys](int first, int last) {
            for (int key = first; key <= last; ++key) {
                keys.append(key);
            }
        };
        addRange(Qt::Key_Space, Qt::Key_AsciiTilde);
        addRange(Qt::Key_Escape, Qt::Key_PageDown);
        addRange(Qt::Key_F1, Qt::Key_F35);
        for (const int key : keys) {
            for (const Qt::KeyboardModifiers modifiers : modifiers) {
                if (closesWindow(QKeyCombination(modifiers, Qt::Key(key)))) {
                    continue;
                }
                field->forceActiveFocus();
                press(key, modifiers);
                // A menu may have opened.
                QTest::keyClick(m_window, Qt::Key_Escape);
                QVERIFY2(m_connector.calls().isEmpty(),
                         qPrintable(QKeySequence(QKeyCombination(modifiers, Qt::Key(key))).toString()));
            }
        }
        QVERIFY(m_window->isVisible());
        QVERIFY(!callsAfterPressing(u"Check server"_s).isEmpty());
    }

    void theConnectorGetsTheTokenInOneLine()
    {
        paste(u"Bind token from terminal.brindlecove.example"_s, u" bt-7f\r\n3a\n"_s);
        QCOMPARE(m_viewModel->bindToken(), u" bt-7f3a"_s);
        QCOMPARE(callsAfterPressing(u"Claim token"_s).value(0),
                 QStringList({u"claim-token"_s, u" bt-7f3a"_s}));
    }

    void theConnectorGetsTheKeysInOneLine()
    {
        paste(u"API key"_s, u"key\n"_s);
        paste(u"API secret"_s, u"se\u2028cret\r"_s);
        paste(u"Passphrase"_s, u"\npass phrase "_s);
        QCOMPARE(callsAfterPressing(u"Validate and save keys"_s).value(0),
                 QStringList({u"validate"_s, u"okx"_s, u"key"_s, u"secret"_s, u"pass phrase "_s}));
    }
};

static const TestClass<TestFieldKeys> testFieldKeys("tst_fieldkeys");

#include "tst_fieldkeys.moc"
