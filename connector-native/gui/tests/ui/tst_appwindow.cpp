#include "bridge/connectorviewmodel.h"
#include "bridge/statuspolltask.h"
#include "shownitems.h"
#include "support/fakeconnector.h"
#include "support/testprogram.h"
#include "ui/platform/systemfonts.h"
#include "ui/scrolling/scrollarea.h"
#include "windowtesting.h"

#include <QtGui/qcursor.h>
#include <QtGui/qguiapplication.h>
#include <QtGui/qscreen.h>
#include <QtQml/qqmlapplicationengine.h>
#include <QtQuick/qquickwindow.h>
#include <QtTest/qsignalspy.h>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

const QStringList refresh{u"status"_s, u"server-health"_s, u"bind-status"_s, u"status"_s};
const QString loadBybit = u"load-credentials bybit"_s;

constexpr qreal pagePadding = 28;

struct ShownText
{
    QString text;
    QRectF place;
};

} // namespace

// The program's window as it is started, with what it does when it appears and goes.
class TestAppWindow : public QObject
{
    Q_OBJECT

    FakeConnector m_connector;
    std::unique_ptr<QQmlApplicationEngine> m_engine;
    QQuickWindow *m_window = nullptr;
    ConnectorViewModel *m_viewModel = nullptr;

    void start(const QVariantMap &properties = {})
    {
        m_engine = std::make_unique<QQmlApplicationEngine>();
        m_engine->setInitialProperties(properties);
        m_engine->addImportPath(u":/"_s);
        m_engine->load(QUrl(u"qrc:/BrindlecoveConnectorGUI/ui/BrindlecoveConnectorGUIApp.qml"_s));
        QCOMPARE(m_engine->rootObjects().size(), 1);
        m_window = qobject_cast<QQuickWindow *>(m_engine->rootObjects().constFirst());
        QVERIFY(m_window);
        m_viewModel = m_window->findChild<ConnectorViewModel *>();
        QVERIFY(m_viewModel);
    }

    // A cancelled task lives on until the event loop has cleared it away.
    [[nodiscard]] qsizetype pollTasks() const
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return m_viewModel->findChildren<StatusPollTask *>().size();
    }

    [[nodiscard]] ScrollArea *page() const { return m_window->findChild<ScrollArea *>(); }

    [[nodiscard]] QList<QQuickItem *> shownCards() const
    {
        QList<QQuickItem *> items = shownBelow(m_window->contentItem());
        items.removeIf([](const QQuickItem *item) {
            return !item->property("naturalWidth").isValid() || item->height() <= 0;
        });
        return items;
    }

    // Of all texts in the window's own rectangle.
    [[nodiscard]] QSet<QString> shownFonts() const
    {
        QSet<QString> fonts;
        const QRectF view({}, m_window->size());
        for (const QQuickItem *item : shownBelow(m_window->contentItem())) {
            const QRectF place = item->mapRectToScene(item->boundingRect());
            if (!item->property("text").toString().isEmpty() && view.intersects(place)) {
                fonts.insert(item->property("font").value<QFont>().key());
            }
        }
        return fonts;
    }

    // Where the letters of each text are, in the page.
    [[nodiscard]] QList<ShownText> shownTexts() const
    {
        QList<ShownText> texts;
        for (const QQuickItem *item : shownBelow(page()->content())) {
            const QString text = item->property("text").toString();
            if (item->inherits("QQuickText") && !text.isEmpty()) {
                const QSizeF size(item->property("contentWidth").toReal(),
                                  item->property("contentHeight").toReal());
                texts.append({text, item->mapRectToItem(page()->content(), QRectF({}, size))});
            }
        }
        return texts;
    }

private slots:
    void initTestCase() { m_connector.steerBesideProgram(); }
    void init() { m_connector.reset(); }

    void cleanup() { m_engine.reset(); }

    void appearingRefreshesThenLoadsThenPolls()
    {
        start();
        QCOMPARE(m_connector.calls(), QStringList());
        QTRY_COMPARE(m_connector.calls(), refresh + QStringList{loadBybit} + refresh);
        // The first round has found nothing to wait for.
        QVERIFY(!m_viewModel->isPolling());
    }

    void aPendingSignatureGoesOnPolling()
    {
        m_connector.answer(u"bind-status"_s, u"pending_signature"_s);
        start();
        QTRY_COMPARE(m_connector.calls(), refresh + QStringList{loadBybit} + refresh);
        QVERIFY(m_viewModel->isPolling());
        QCOMPARE(pollTasks(), 1);
    }

    void disappearingStopsPolling()
    {
        m_connector.answer(u"bind-status"_s, u"pending_signature"_s);
        start();
        QTRY_COMPARE(m_connector.calls().size(), 9);
        m_window->hide();
        QTRY_VERIFY(!m_viewModel->isPolling());
        QCOMPARE(pollTasks(), 0);
        QCOMPARE(m_connector.calls().size(), 9);
    }

    void shownTwiceItPollsOnce()
    {
        m_connector.answer(u"bind-status"_s, u"pending_signature"_s);
        start();
        QTRY_COMPARE(m_connector.calls().size(), 9);
        m_window->hide();
        QTRY_VERIFY(!m_viewModel->isPolling());
        m_window->show();
        QTRY_COMPARE(m_connector.calls().size(), 18);
        QVERIFY(m_viewModel->isPolling());
        QCOMPARE(pollTasks(), 1);
    }

    void anotherExchangeIsLoadedWhenItIsSelected()
    {
        start();
        QTRY_COMPARE(m_connector.calls().size(), 9);
        m_viewModel->setSelectedExchangeId(u"okx"_s);
        QCOMPARE(m_connector.calls().mid(9), QStringList{u"load-credentials okx"_s});
        // The same one again is no change.
        m_viewModel->setSelectedExchangeId(u"okx"_s);
        QCOMPARE(m_connector.calls().size(), 10);
    }

    void everybodyKnowsOfTheSelectionBeforeItsLoad()
    {
        start();
        QTRY_COMPARE(m_connector.calls().size(), 9);
        int notified = 0;
        int notifiedBeforeTheLoad = -1;
        const auto count = [&] { ++notified; };
        // Later than whoever loads.
        connect(m_viewModel, &ConnectorViewModel::selectedExchangeIdChanged, m_viewModel, count);
        connect(m_viewModel, &ConnectorViewModel::selectedDraftChanged, m_viewModel, count);
        connect(m_viewModel, &ConnectorViewModel::selectedBalanceChanged, m_viewModel, count);
        connect(m_viewModel, &ConnectorViewModel::aboutToBlock, m_viewModel,
                [&] { notifiedBeforeTheLoad = notified; });
        m_viewModel->setSelectedExchangeId(u"okx"_s);
        QCOMPARE(notifiedBeforeTheLoad, 3);
    }

    // The first command may take long.
    void everythingIsOnTheScreenBeforeTheFirstCommand()
    {
        start();
        qsizetype inFrame = 0;
        connect(m_window, &QQuickWindow::frameSwapped, m_viewModel, [&] { inFrame = shownCards().size(); });
        qsizetype beforeFirst = -1;
        connect(m_viewModel, &ConnectorViewModel::aboutToBlock, m_viewModel, [&] {
            if (m_connector.calls().isEmpty()) {
                beforeFirst = inFrame;
            }
        });
        QTRY_COMPARE(m_connector.calls().size(), 9);
        QCOMPARE(beforeFirst, 4);
    }

    void theFirstFrameHoldsAllThatIsInView_data()
    {
        QTest::addColumn<int>("typeSize");
        QTest::addColumn<int>("height");
        for (const int typeSize : {8, 11, 13, 16, 20, 26}) {
            for (const int height : {760, 900, 1100, 1500}) {
                QTest::addRow("%d, %d high", typeSize, height) << typeSize << height;
            }
        }
    }

    void theFirstFrameHoldsAllThatIsInView()
    {
        QFETCH(const int, typeSize);
        QFETCH(const int, height);
        const SystemTypeSize type(typeSize);
        start({{u"height"_s, height}});
        qsizetype cardsInFrame = 0;
        qreal lengthInFrame = 0;
        const auto look = [&] {
            cardsInFrame = shownCards().size();
            lengthInFrame = page()->content()->height();
        };
        connect(m_window, &QQuickWindow::frameSwapped, m_viewModel, look, Qt::SingleShotConnection);
        QTRY_COMPARE(m_connector.calls().size(), 9);

        const QList<QQuickItem *> cards = shownCards();
        QCOMPARE(cards.size(), 4);
        const auto isInView = [&](const QQuickItem *card) { return card->mapToScene({}).y() < height; };
        QVERIFY(cardsInFrame >= std::ranges::count_if(cards, isInView));
        // Else the thumb of the page's scroll bar would jump.
        QVERIFY(std::abs(lengthInFrame - page()->content()->height()) <= 2);
    }

    // With everything open that can be, or nothing, in a window of the minimum width.
    void textsStayWithinThePageAndApart_data()
    {
        QTest::addColumn<int>("typeSize");
        QTest::addColumn<bool>("open");
        for (const int typeSize : {13, 26, 35}) {
            QTest::addRow("%d, open", typeSize) << typeSize << true;
            QTest::addRow("%d, closed", typeSize) << typeSize << false;
        }
    }

    void textsStayWithinThePageAndApart()
    {
        QFETCH(const int, typeSize);
        QFETCH(const bool, open);
        const SystemTypeSize type(typeSize);
        m_connector.answer(u"balance"_s, uR"({"ccy":"USDT","cashBal":"13","availBal":"12.5"})"_s);
        start();
        QTRY_COMPARE(m_connector.calls().size(), 9);
        if (open) {
            m_viewModel->setSelectedExchangeId(u"okx"_s);
            m_viewModel->loadBalance();
            m_viewModel->setTokenDetailsExpanded(true);
            m_viewModel->setLogsExpanded(true);
        }
        (void)settled(*m_window);

        const QRectF within(pagePadding, 0, m_window->width() - 2 * pagePadding, page()->content()->height());
        const QList<ShownText> texts = shownTexts();
        QVERIFY(texts.size() > (open ? 40 : 30));
        for (qsizetype i = 0; i < texts.size(); ++i) {
            QVERIFY2(within.contains(texts.at(i).place), qPrintable(texts.at(i).text));
            for (qsizetype j = 0; j < i; ++j) {
                QVERIFY2(!texts.at(i).place.intersects(texts.at(j).place),
                         qPrintable(texts.at(i).text + u" over "_s + texts.at(j).text));
            }
        }
    }

    // One that was missing would be opened while the texts are created, and one too many for nothing.
    void theFontsOpenedEarlyAreThoseOfTheFirstFrame()
    {
        start();
        QSet<QString> shown;
        connect(
            m_window, &QQuickWindow::frameSwapped, m_viewModel, [&] { shown = shownFonts(); },
            Qt::SingleShotConnection);
        QTRY_VERIFY(!shown.isEmpty());
        QSet<QString> opened;
        for (const QFont &font : SystemFonts::ofFirstFrame()) {
            opened.insert(font.key());
        }
        QCOMPARE(opened, shown);
        QTRY_COMPARE(m_connector.calls().size(), 9);
    }

    void whatLedToACommandIsOnTheScreenBeforeIt()
    {
        start();
        QTRY_COMPARE(m_connector.calls().size(), 9);
        QString shown;
        connect(m_window, &QQuickWindow::frameSwapped, m_viewModel,
                [&] { shown = m_viewModel->pressedButtonId(); });
        QString shownBefore;
        // Later than whoever shows.
        connect(m_viewModel, &ConnectorViewModel::aboutToBlock, m_viewModel, [&] { shownBefore = shown; });
        m_viewModel->setPressedButtonId(u"check-server"_s);
        m_viewModel->checkServer();
        QCOMPARE(shownBefore, u"check-server"_s);
    }

    void thePointerWaitsWithTheThread()
    {
        start();
        QTRY_COMPARE(m_connector.calls().size(), 9);
        const auto shape = [] {
            const QCursor *cursor = QGuiApplication::overrideCursor();
            return cursor ? cursor->shape() : Qt::ArrowCursor;
        };
        QCOMPARE(shape(), Qt::ArrowCursor);
        QList<Qt::CursorShape> shapes;
        const auto note = [&] { shapes.append(shape()); };
        connect(m_viewModel, &ConnectorViewModel::aboutToBlock, m_viewModel, note);
        connect(m_viewModel, &ConnectorViewModel::logsChanged, m_viewModel, note);
        m_viewModel->refreshAll();
        QCOMPARE(shapes, QList<Qt::CursorShape>(5, Qt::WaitCursor));
        QCOMPARE(shape(), Qt::ArrowCursor);
        m_viewModel->setLogsExpanded(true);
        QCOMPARE(shapes.size(), 5);
    }

    void thereIsOneViewModel()
    {
        start();
        QCOMPARE(m_window->findChildren<ConnectorViewModel *>().size(), 1);
        QTRY_COMPARE(m_connector.calls().size(), 9);
        m_window->hide();
        m_window->show();
        QTRY_COMPARE(m_connector.calls().size(), 18);
        QCOMPARE(m_window->findChildren<ConnectorViewModel *>(), QList{m_viewModel});
    }

    void theWindowKeepsItsMinimumSize()
    {
        start();
        QCOMPARE(m_window->minimumSize(), QSize(1120, 760));
        QTRY_COMPARE(m_connector.calls().size(), 9);
        m_window->resize(300, 200);
        QTRY_VERIFY(m_window->width() >= 1120);
        QTRY_VERIFY(m_window->height() >= 760);
        m_window->resize(1500, 1000);
        QTRY_COMPARE(m_window->size(), QSize(1500, 1000));
    }

    void keysScrollThePageBeforeAnythingHasTheFocus()
    {
        start();
        QTRY_COMPARE(m_connector.calls().size(), 9);
        m_window->requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(m_window));
        QTest::keyClick(m_window, Qt::Key_End);
        QVERIFY(page()->maximumY() > 0);
        QTRY_COMPARE(page()->contentY(), page()->maximumY());
    }

    void thePageEndsWithTheWindowsOwnScreen()
    {
        constexpr int titleBar = 40;
        start();
        const auto *page = m_window->findChild<ScrollArea *>();
        for (const QScreen *screen : QGuiApplication::screens()) {
            m_window->setPosition(screen->geometry().topLeft());
            QTRY_COMPARE(m_window->screen(), screen);
            const QSize room = screen->size() - QSize(0, titleBar);
            QTRY_COMPARE(page->size(), QSizeF(m_window->size().boundedTo(room)));
            QCOMPARE(page->maximumX(), m_window->width() - page->width());
        }
        // What is larger than its minimum is as large as its user wants it.
        m_window->resize(1500, 1000);
        QTRY_COMPARE(page->size(), QSizeF(1500, 1000));
    }

    void theWordsAreTheInitialOnesBeforeTheFirstRefresh()
    {
        m_connector.answer(u"status"_s, u"connector_health=ready\n"_s);
        start();
        QCOMPARE(m_viewModel->connectorStatus(), u"unknown"_s);
        QCOMPARE(m_viewModel->serverStatus(), u"unknown"_s);
        QCOMPARE(m_viewModel->bindingStatus(), u"not bound"_s);
        QTRY_COMPARE(m_viewModel->connectorStatus(), u"ready"_s);
    }
};

static const TestClass<TestAppWindow> testAppWindow("tst_appwindow");

#include "tst_appwindow.moc"
