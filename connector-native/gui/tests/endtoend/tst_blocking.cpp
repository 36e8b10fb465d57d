#include "desktop.h"
#include "support/testprogram.h"
#include "windowtest.h"

using namespace Qt::StringLiterals;

/// What is on the screen while a command blocks the window.
class TestBlocking : public WindowTest
{
    Q_OBJECT

    /// Does it, and waits until the command that it leads to runs, which then takes long.
    template <typename Action> void blockBy(const QString &command, const Action &action) const
    {
        QVERIFY(application().setFaults("ONLY=" + command.toLatin1() + "\nDELAY_MS=20000\n"));
        action();
        QTRY_COMPARE(application().calls().constLast().value(0), command);
    }

    /// All of the window from the second card on, which no command of the start-up changes.
    [[nodiscard]] QImage withoutStatus(const QImage &picture) const
    {
        const QRect exchanges = window().label(u"Exchange API"_s).extents();
        const int top = exchanges.top() - window().rect().top();
        return picture.copy(picture.rect().adjusted(0, top, 0, 0));
    }

private slots:
    void allCardsAreShownBeforeTheFirstCommandEnds()
    {
        renew();
        QVERIFY(application().setFaults("ONLY=status\nDELAY_MS=3000\n"));
        QVERIFY(application().launch());
        QTRY_COMPARE(application().calls().size(), 1);
        QVERIFY(application().setFaults(""));
        const QImage blocked = desktop::pictureOf(desktop::windowOf(application().processId()));
        QCOMPARE(application().calls().size(), 1);
        awaitStart();
        QTRY_COMPARE(withoutStatus(desktop::pictureOf(window().id())), withoutStatus(blocked));
    }

    void aSelectedTabIsShownWholeBeforeItsLoad()
    {
        // The outcome of a load that finds nothing looks as its beginning.
        select(u"KuCoin"_s);
        QTRY_COMPARE(application().calls().size(), startupCalls + 1);
        const QImage expected = desktop::pictureOf(window().id());
        select(u"Bybit"_s);
        QTRY_COMPARE(application().calls().size(), startupCalls + 2);
        const QImage before = desktop::pictureOf(window().id());
        QVERIFY(before != expected);

        const QPoint tab = window().tab(u"KuCoin"_s).extents().center();
        blockBy(u"load-credentials"_s, [&] { desktop::clickAt(tab); });
        QTRY_COMPARE(desktop::pictureOf(window().id()), expected);
    }

    void thePointerWaitsAsLongAsACommandRuns()
    {
        const QPoint place = window().button(u"Check server"_s).extents().center();
        desktop::moveTo(place);
        const QImage idle = desktop::pointerShape();
        QVERIFY(application().setFaults("ONLY=server-health\nDELAY_MS=2000\n"));
        desktop::clickAt(place);
        QTRY_COMPARE(application().calls().size(), startupCalls + 1);
        QVERIFY(desktop::pointerShape() != idle);
        QTRY_COMPARE(desktop::pointerShape(), idle);
        QVERIFY(window().shows(u"%1 command log entries available"_s.arg(startupCalls + 1)));
    }
};

static const TestClass<TestBlocking> testBlocking("tst_blocking");

#include "tst_blocking.moc"
