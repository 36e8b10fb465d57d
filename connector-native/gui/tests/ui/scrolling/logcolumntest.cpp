#include "logcolumntest.h"

#include <QtQml/qqmlcomponent.h>
#include <QtTest/qtest.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// Each row is as high as its output says, at a width of 400.
constexpr auto logPage = R"(
import QtQuick
import BrindlecoveConnectorGUI

Window {
    property alias area: area
    property alias column: column

    height: 300
    visible: true
    width: 400

    ScrollArea {
        id: area

        anchors.fill: parent
        focus: true

        content: Item {
            height: column.y + column.implicitHeight + 30

            LogColumn {
                id: column

                spacing: 8
                typicalHeight: 60
                viewport: area
                width: parent.width
                y: 50

                delegate: Item {
                    required property string title
                    required property string output

                    implicitHeight: Math.round(Number(output) * 400 / width)

                    Item {
                        activeFocusOnTab: true
                        anchors.fill: parent
                    }
                }
            }
        }
    }
}
)";

} // namespace

void LogColumnTest::fill(int rows, const std::function<int(int age)> &height)
{
    for (int age = 0; age < rows; ++age) {
        add(height(age));
    }
    m_column->setModel(m_log.get());
    settle();
}

void LogColumnTest::scrollTo(qreal contentY)
{
    m_area->setContentY(contentY);
    settle();
}

QList<QQuickItem *> LogColumnTest::rows() const
{
    QList<QQuickItem *> visible = m_column->childItems();
    visible.removeIf([](const QQuickItem *item) { return !item->isVisible(); });
    return visible;
}

QQuickItem *LogColumnTest::row(const QString &title) const
{
    const QList<QQuickItem *> items = rows();
    const auto found = std::find_if(items.cbegin(), items.cend(), [&](const QQuickItem *item) {
        return item->property("title").toString() == title;
    });
    return found == items.cend() ? nullptr : *found;
}

QList<ShownRow> LogColumnTest::shown() const
{
    QList<ShownRow> result;
    for (const QQuickItem *item : rows()) {
        const qreal top = item->mapToItem(m_area, QPointF()).y();
        const ShownRow row{item->property("title").toString(), top, top + item->height()};
        if (row.bottom > 0 && row.top < m_area->height()) {
            result.append(row);
        }
    }
    return result;
}

std::optional<ShownRow> LogColumnTest::shown(const QString &title) const
{
    const QList<ShownRow> all = shown();
    const auto found =
        std::find_if(all.cbegin(), all.cend(), [&](const ShownRow &row) { return row.title == title; });
    return found == all.cend() ? std::nullopt : std::optional(*found);
}

void LogColumnTest::verifyContiguous() const
{
    const QList<ShownRow> all = shown();
    QVERIFY(!all.isEmpty());
    for (qsizetype i = 1; i < all.size(); ++i) {
        QCOMPARE(all[i].top, all[i - 1].bottom + spacing);
        QCOMPARE(all[i].title.toInt(), all[i - 1].title.toInt() - 1);
    }
    QVERIFY(all.first().top <= spacing || all.first().title.toInt() == m_log->count() - 1);
    QVERIFY(all.last().bottom >= m_area->height() - spacing || all.last().title == "0"_L1);
}

void LogColumnTest::initTestCase()
{
    m_engine.addImportPath(u":/"_s);
}

void LogColumnTest::init()
{
    QQmlComponent component(&m_engine);
    component.setData(logPage, {});
    m_window.reset(qobject_cast<QQuickWindow *>(component.create()));
    QVERIFY2(m_window, qPrintable(component.errorString()));
    m_area = m_window->property("area").value<ScrollArea *>();
    m_column = m_window->property("column").value<LogColumn *>();
    QVERIFY(m_area && m_column);
    m_log = std::make_unique<CommandLog>();
    m_window->requestActivate();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void LogColumnTest::cleanup()
{
    m_window.reset();
    m_log.reset();
}

#include "moc_logcolumntest.cpp"
