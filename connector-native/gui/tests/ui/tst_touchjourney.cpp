#include "finger.h"
#include "shownitems.h"
#include "support/fakeconnector.h"
#include "support/testprogram.h"
#include "ui/controls/pressarea.h"
#include "ui/output/outputview.h"
#include "ui/scrolling/scrollarea.h"

#include <QtGui/qclipboard.h>
#include <QtGui/qguiapplication.h>
#include <QtQml/qqmlapplicationengine.h>
#include <QtQuick/qquickwindow.h>

#include <algorithm>
#include <cmath>
#include <memory>

using namespace Qt::StringLiterals;

// A trader's whole day with a finger alone: the program's window, and the simulator behind it.
class TestTouchJourney : public QObject
{
    Q_OBJECT

    static constexpr int flickedWay = 300;

    FakeConnector m_connector;
    QTemporaryDir m_state;
    Finger m_finger;
    QQmlApplicationEngine m_engine;
    QQuickWindow *m_window = nullptr;
    ScrollArea *m_page = nullptr;

    // What is on the window, in the terms of its user.
    template <typename Test> [[nodiscard]] QQuickItem *find(Test test) const
    {
        const QList<QQuickItem *> all = shownBelow(m_window->contentItem());
        const auto found = std::ranges::find_if(all, test);
        return found == all.end() ? nullptr : *found;
    }
    [[nodiscard]] bool shows(const QString &text) const
    {
        return find([&](const QQuickItem *item) { return item->property("text") == text; });
    }
    [[nodiscard]] QQuickItem *button(const QString &title) const
    {
        return find([&](QQuickItem *item) {
            return qobject_cast<PressArea *>(item) && item->property("title") == title;
        });
    }
    [[nodiscard]] QQuickItem *field(const QString &placeholder) const
    {
        return find([&](const QQuickItem *item) {
            return item->property("placeholder").toString().startsWith(placeholder);
        });
    }
    [[nodiscard]] OutputView *output(const QString &title) const
    {
        return qobject_cast<OutputView *>(find([&](QQuickItem *item) {
            return qobject_cast<OutputView *>(item) && item->property("accessibleTitle") == title;
        }));
    }
    [[nodiscard]] QQuickItem *menuEntry(const QString &title) const
    {
        return find([&](const QQuickItem *item) {
            return item->inherits("QQuickMenuItem") && item->property("text") == title;
        });
    }
    [[nodiscard]] static QString textOf(const QQuickItem *field)
    {
        return field->property("input").value<QQuickItem *>()->property("text").toString();
    }
    [[nodiscard]] QStringList lastCalls(qsizetype count) const { return m_connector.calls().last(count); }

    void setFaults(const QByteArray &lines) const
    {
        QFile file(m_state.filePath(u"faults"_s));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(lines) == lines.size());
    }

    void dragAndRest(QPoint from, QPoint to)
    {
        m_finger.drag(from, to);
        m_finger.rest(to);
        m_finger.release(to);
    }

    // Flicks the page upwards, and again as long as a busy machine makes the finger too slow for that.
    // Returns where the page was.
    qreal flick()
    {
        constexpr int quick = 100;
        const QPoint low(10, m_window->height() - 100);
        const QPoint high = low - QPoint(0, flickedWay);
        qreal before = 0;
        do {
            dragAndRest(high, low);
            before = m_page->contentY();
        } while (m_finger.flick(low, high) > quick);
        return before;
    }

    // Drags the page until the item lies within the window.
    void bringIntoView(const QQuickItem *item)
    {
        constexpr int attempts = 20;
        constexpr int margin = 10;
        for (int attempt = 0; attempt < attempts; ++attempt) {
            const int distance = m_window->height() / 2 - middleOf(item).y();
            const bool isInView = std::abs(distance) < m_window->height() / 2 - 60;
            if (isInView) {
                return;
            }
            const int way = std::clamp(distance, -300, 300);
            const QPoint from(margin, m_window->height() / 2 - way / 2);
            dragAndRest(from, from + QPoint(0, way));
        }
        QFAIL("It does not come into view.");
    }

    void tap(const QQuickItem *item)
    {
        QVERIFY(item);
        bringIntoView(item);
        m_finger.tap(middleOf(item));
    }
    void tapButton(const QString &title) { tap(button(title)); }

    void chooseByLongPress(QPoint at, const QString &entry)
    {
        m_finger.press(at);
        QTRY_VERIFY(menuEntry(entry));
        m_finger.release(at);
        (void)m_window->grabWindow();
        tap(menuEntry(entry));
        QTRY_VERIFY(!menuEntry(entry));
    }

    void pasteInto(const QString &placeholder, const QString &text)
    {
        QVERIFY(field(placeholder));
        bringIntoView(field(placeholder));
        QGuiApplication::clipboard()->setText(text);
        chooseByLongPress(middleOf(field(placeholder)), u"Paste"_s);
        QCOMPARE(textOf(field(placeholder)), text);
    }

    void pressAndExpect(const QString &title, const QString &call)
    {
        const qsizetype before = m_connector.calls().size();
        tapButton(title);
        QTRY_COMPARE(m_connector.calls().size(), before + 1);
        QCOMPARE(lastCalls(1), QStringList{call});
    }

private slots:
    void initTestCase()
    {
        qputenv("BRINDLECOVE_SIMULATOR_STATE", QFile::encodeName(m_state.path()));
        for (const char *command : {"status", "server-health", "bind-status", "claim-token",
                                    "disconnect-binding", "update-check", "update-download", "update-apply",
                                    "load-credentials", "validate", "delete-credentials", "balance"}) {
            m_connector.act(QString::fromLatin1(command), "exec '" SIMULATOR_PROGRAM "' \"$@\"\n");
        }
        m_connector.steerBesideProgram();
        m_engine.addImportPath(u":/"_s);
        m_engine.load(QUrl(u"qrc:/BrindlecoveConnectorGUI/ui/BrindlecoveConnectorGUIApp.qml"_s));
        m_window = qobject_cast<QQuickWindow *>(m_engine.rootObjects().value(0));
        QVERIFY(m_window);
        m_page = m_window->findChild<ScrollArea *>();
        QVERIFY(m_page);
        m_finger.setWindow(m_window);
        m_window->requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(m_window));
        QTRY_COMPARE(m_connector.calls().size(), 9);
    }

    // One journey: each step goes on where the one before it ended.
    void claimsAToken()
    {
        pasteInto(u"Bind token"_s, u"Token 1"_s);
        tapButton(u"Claim token"_s);
        QTRY_VERIFY(shows(u"pending signature"_s));
        QVERIFY(m_connector.callArguments().contains(QStringList({u"claim-token"_s, u"Token 1"_s})));
        tapButton(u"Show details"_s);
        QTRY_VERIFY(output(u"Binding result"_s));
        QTRY_VERIFY_WITH_TIMEOUT(shows(u"authorized"_s), 20000);
    }

    void scrollsAPanelAndNotThePage()
    {
        setFaults("ONLY=server-health\nFLOOD_BYTES=4000\n");
        tapButton(u"Check server"_s);
        QTRY_COMPARE(lastCalls(1), QStringList{u"server-health"_s});
        setFaults("");
        const OutputView *answer = output(u"Connector / server"_s);
        bringIntoView(answer->parentItem());
        const auto *panel = qobject_cast<ScrollArea *>(answer->parentItem());
        QVERIFY(panel);
        const qreal page = m_page->contentY();
        dragAndRest(middleOf(panel), middleOf(panel) - QPoint(0, 50));
        QCOMPARE(panel->contentY(), 50.0);
        QCOMPARE(m_page->contentY(), page);
    }

    void tradesOnAnExchange()
    {
        tapButton(u"OKX"_s);
        QTRY_COMPARE(lastCalls(1), QStringList{u"load-credentials okx"_s});
        for (const QString &placeholder : {u"API key"_s, u"API secret"_s, u"Passphrase"_s}) {
            pasteInto(placeholder, u"trade-"_s + placeholder);
        }
        tapButton(u"Validate and save keys"_s);
        QTRY_VERIFY(shows(u"Status: valid"_s));
        QCOMPARE(lastCalls(2),
                 QStringList(
                     {u"validate okx trade-API key trade-API secret trade-Passphrase"_s, u"balance okx"_s}));
        QVERIFY(shows(u"7645.118204 USDT"_s));
        pressAndExpect(u"Load balance"_s, u"balance okx"_s);
        pressAndExpect(u"Delete"_s, u"delete-credentials okx"_s);
        QCOMPARE(textOf(field(u"API secret"_s)), QString());
    }

    void updates()
    {
        pressAndExpect(u"Check for updates"_s, u"update-check"_s);
        pressAndExpect(u"Download update"_s, u"update-download"_s);
        pressAndExpect(u"Install update"_s, u"update-apply"_s);
    }

    void readsTheLog()
    {
        tapButton(u"Open technical log"_s);
        QTRY_VERIFY(output(u"update-apply"_s));
        OutputView *newest = output(u"update-apply"_s);
        bringIntoView(newest);
        const qsizetype inWord = newest->source().indexOf(u"applied"_s) + 3;
        const QPoint word = newest->mapToScene(newest->characterRect(inWord).center()).toPoint();
        chooseByLongPress(word, u"Copy"_s);
        QCOMPARE(QGuiApplication::clipboard()->text(), newest->selectedText());
        QVERIFY(newest->selectedText().contains(u"applied"_s));
        chooseByLongPress(word + QPoint(0, 40), u"Select all"_s);
        chooseByLongPress(word, u"Copy"_s);
        QCOMPARE(QGuiApplication::clipboard()->text(), newest->source());
    }

    void flicksThePageUpToItsEnd()
    {
        const qreal before = flick();
        QTRY_VERIFY(m_page->contentY() > before + flickedWay + 30);
        QVERIFY(m_page->contentY() <= m_page->maximumY());
    }

    void closes()
    {
        QVERIFY(m_window->close());
        QTRY_VERIFY(!m_window->isVisible());
    }
};

static const TestClass<TestTouchJourney> testTouchJourney("tst_touchjourney");

#include "tst_touchjourney.moc"
