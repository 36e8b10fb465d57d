#include "support/testprogram.h"
#include "ui/platform/itemfilter.h"

#include <QtCore/qcoreevent.h>
#include <QtTest/qsignalspy.h>

#include <memory>

namespace {

class Listener : public ItemFilter
{
public:
    using ItemFilter::ItemFilter;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        heard += event->type() == QEvent::User ? 1 : 0;
        return ItemFilter::eventFilter(watched, event);
    }

    int heard = 0;
};

void send(QObject &item)
{
    QEvent event(QEvent::User);
    QCoreApplication::sendEvent(&item, &event);
}

} // namespace

// What all filters of an item's events have in common.
class TestItemFilter : public QObject
{
    Q_OBJECT

private slots:
    void itHearsItsItemOnly()
    {
        QQuickItem first;
        QQuickItem second;
        Listener listener;
        QSignalSpy changes(&listener, &ItemFilter::itemChanged);
        listener.setItem(&first);
        listener.setItem(&first);
        QCOMPARE(changes.size(), 1);
        send(first);
        send(second);
        QCOMPARE(listener.heard, 1);
        listener.setItem(&second);
        QCOMPARE(changes.size(), 2);
        QCOMPARE(listener.item(), &second);
        send(first);
        QCOMPARE(listener.heard, 1);
        send(second);
        QCOMPARE(listener.heard, 2);
        listener.setItem(nullptr);
        send(second);
        QCOMPARE(listener.heard, 2);
    }

    void theSignalsOfTheItemBeforeAreLeft()
    {
        QQuickItem first;
        QQuickItem second;
        Listener listener;
        listener.setItem(&first);
        int moves = 0;
        connect(&first, &QQuickItem::xChanged, &listener, [&moves] { ++moves; });
        listener.setItem(&second);
        first.setX(5);
        QCOMPARE(moves, 0);
    }

    void theItemMayGoFirst()
    {
        auto item = std::make_unique<QQuickItem>();
        Listener listener;
        listener.setItem(item.get());
        item.reset();
        QCOMPARE(listener.item(), nullptr);
        QQuickItem next;
        listener.setItem(&next);
        send(next);
        QCOMPARE(listener.heard, 1);
    }
};

static const TestClass<TestItemFilter> testItemFilter("tst_itemfilter");

#include "tst_itemfilter.moc"
