#pragma once

#include "bridge/commandlog.h"
#include "ui/scrolling/logcolumn.h"

#include <QtQml/qqmlengine.h>
#include <QtQuick/qquickwindow.h>

#include <functional>
#include <memory>
#include <optional>

/// A row as it stands in the viewport.
struct ShownRow
{
    QString title;
    qreal top = 0;
    qreal bottom = 0;

    friend bool operator==(const ShownRow &, const ShownRow &) = default;
};

/// A window with a scrolled page that holds nothing but a log column below some space, and the column's log.
/// The title of a row is its number counted from the oldest, its output the height it takes at a width of
/// 400.
class LogColumnTest : public QObject
{
    Q_OBJECT

public slots:
    void initTestCase();
    void init();
    void cleanup();

protected:
    static constexpr qreal spacing = 8;
    static constexpr qreal columnTop = 50;

    void fill(int rows, const std::function<int(int age)> &height);
    void add(int height) { m_log->insertNewest(QString::number(m_log->count()), QString::number(height)); }
    void settle() { (void)m_window->grabWindow(); }
    void scrollTo(qreal contentY);
    [[nodiscard]] QList<QQuickItem *> rows() const;
    /// The rows of which the viewport shows at least a pixel, top to bottom.
    [[nodiscard]] QList<ShownRow> shown() const;
    [[nodiscard]] std::optional<ShownRow> shown(const QString &title) const;
    [[nodiscard]] QQuickItem *row(const QString &title) const;
    /// Each row begins a spacing below the one before it, is the next older one, and together they fill the
    /// view.
    void verifyContiguous() const;

    std::unique_ptr<CommandLog> m_log;
    std::unique_ptr<QQuickWindow> m_window;
    ScrollArea *m_area = nullptr;
    LogColumn *m_column = nullptr;

private:
    QQmlEngine m_engine;
};
