#include "ui/scrolling/logcolumn.h"

#include <QQmlContext>
#include <QQuickWindow>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr qreal maximumHeight = 1e6;

} // namespace

void LogColumn::setModel(QAbstractItemModel *model)
{
    if (m_model == model) {
        return;
    }
    if (m_model) {
        m_model->disconnect(this);
    }
    m_model = model;
    if (m_model) {
        connect(m_model, &QAbstractItemModel::rowsInserted, this, &LogColumn::insertRows);
        connect(m_model, &QAbstractItemModel::modelReset, this, &LogColumn::restart);
    }
    restart();
}

void LogColumn::setViewport(ScrollArea *viewport)
{
    if (m_viewport == viewport) {
        return;
    }
    m_viewport = viewport;
    if (m_viewport) {
        connect(m_viewport, &ScrollArea::contentYChanged, this, &LogColumn::moveRows);
        connect(m_viewport, &ScrollArea::contentYChanged, this, &QQuickItem::polish);
        connect(m_viewport, &ScrollArea::extentChanged, this, &QQuickItem::polish);
    }
    polish();
}

void LogColumn::componentComplete()
{
    QQuickItem::componentComplete();
    restart();
}

void LogColumn::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    for (const auto &[age, item] : m_rows) {
        item->setWidth(newGeometry.width());
    }
    polish();
}

void LogColumn::itemChange(ItemChange change, const ItemChangeData &data)
{
    QQuickItem::itemChange(change, data);
    if (change == ItemSceneChange) {
        disconnect(m_windowFocus);
        if (data.window) {
            m_windowFocus =
                connect(data.window, &QQuickWindow::activeFocusItemChanged, this, &LogColumn::followFocus);
        }
    }
}

// At once: the next Tab may come before the next frame.
void LogColumn::followFocus()
{
    const Range focused = rowsAroundFocus();
    if (focused != nowhere) {
        const std::optional<Anchor> held = anchor();
        realise(focused);
        place(held);
        polish();
    }
}

void LogColumn::restart()
{
    if (!isComponentComplete()) {
        return;
    }
    dropRowsIf([](Age, const QQuickItem *) { return true; });
    m_heights.reset(m_model ? m_model->rowCount() : 0, m_typicalHeight + m_spacing);
    place(std::nullopt);
    polish();
}

void LogColumn::insertRows(const QModelIndex &parent, int first, int last)
{
    // Rows of a log only ever come in at the front; anything else starts the column over.
    if (parent.isValid() || first != 0) {
        restart();
        return;
    }
    const std::optional<Anchor> held = anchor();
    for (int row = first; row <= last; ++row) {
        m_heights.prependRow();
    }
    place(held);
    polish();
}

QVariantMap LogColumn::rolesOf(int row) const
{
    QVariantMap roles;
    const QModelIndex index = m_model->index(row, 0);
    const QHash<int, QByteArray> names = m_model->roleNames();
    for (auto role = names.cbegin(); role != names.cend(); ++role) {
        roles.insert(QString::fromUtf8(role.value()), m_model->data(index, role.key()));
    }
    return roles;
}

qreal LogColumn::viewportTop() const
{
    return mapFromItem(m_viewport, QPointF()).y() + m_viewport->folded();
}

// While the column's top is in view, the top stays in place. Otherwise the first visible row that has been
// measured does: rows above may turn out taller than estimated.
std::optional<LogColumn::Anchor> LogColumn::anchor() const
{
    if (!m_viewport || m_heights.count() == 0 || viewportTop() <= 0) {
        return std::nullopt;
    }
    const qreal top = viewportTop();
    const Age uppermost = ageOf(m_heights.rowAt(top));
    const auto below = m_rows.upper_bound(uppermost);
    const Age seen = below == m_rows.cbegin() ? uppermost : std::prev(below)->first;
    const bool isInView = m_heights.offset(rowOf(seen)) < top + m_viewport->height();
    const Age age = isInView ? seen : uppermost;
    return Anchor{age, m_heights.offset(rowOf(age)) - top};
}

LogColumn::Range LogColumn::withNeighbours(int first, int last) const
{
    return {std::max(first - 1, 0), std::min(last + 1, m_heights.count() - 1)};
}

LogColumn::Range LogColumn::rowsInView() const
{
    const qreal top = viewportTop();
    const qreal bottom = top + m_viewport->height();
    if (bottom < 0 || top > wholeHeight()) {
        return nowhere;
    }
    return withNeighbours(m_heights.rowAt(top), m_heights.rowAt(bottom));
}

LogColumn::Range LogColumn::rowsAroundFocus() const
{
    const QQuickItem *focused = window() ? window()->activeFocusItem() : nullptr;
    const auto row = std::find_if(m_rows.cbegin(), m_rows.cend(), [focused](const auto &entry) {
        return entry.second == focused || (focused && entry.second->isAncestorOf(focused));
    });
    return row == m_rows.cend() ? nowhere : withNeighbours(rowOf(row->first), rowOf(row->first));
}

void LogColumn::updatePolish()
{
    if (!m_viewport || !m_delegate || m_heights.count() == 0) {
        return;
    }
    const std::optional<Anchor> held = anchor();
    const bool atEnd = held && m_viewport->contentY() >= m_viewport->maximumY();
    for (const auto &[age, item] : m_rows) {
        measure(rowOf(age), *item);
    }
    const int last = m_heights.count() - 1;
    const std::array kept{Range{0, 0}, rowsAroundFocus(), Range{last, last}};
    std::ranges::for_each(kept, [this](Range range) { realise(range); });
    place(held);
    // Measured rows are often smaller than estimated, which brings further ones into view.
    Range seen = rowsInView();
    for (Range realised = nowhere; realised != seen; seen = rowsInView()) {
        realise(seen);
        place(held);
        if (atEnd) {
            m_viewport->moveBy(m_viewport->maximumY());
        }
        realised = seen;
    }
    dropRowsIf([&](Age age, const QQuickItem *) {
        const auto holds = [row = rowOf(age)](Range range) { return range.contains(row); };
        return !holds(seen) && std::ranges::none_of(kept, holds);
    });
}

void LogColumn::realise(Range range)
{
    for (int row = range.first; row <= range.last; ++row) {
        const auto known = m_rows.find(ageOf(row));
        measure(row, known == m_rows.end() ? *createRow(row) : *known->second);
    }
}

void LogColumn::measure(int row, const QQuickItem &item)
{
    m_heights.setHeight(row, std::ceil(item.implicitHeight()) + m_spacing);
}

QQuickItem *LogColumn::createRow(int row)
{
    QVariantMap properties = rolesOf(row);
    properties.insert(QStringLiteral("width"), width());
    auto *item = qobject_cast<QQuickItem *>(
        m_delegate->createWithInitialProperties(properties, m_delegate->creationContext()));
    if (!item) {
        qFatal("a log row could not be created: %s", qPrintable(m_delegate->errorString()));
    }
    item->setParent(this);
    item->setParentItem(this);
    connect(item, &QQuickItem::implicitHeightChanged, this, &QQuickItem::polish);

    const auto inserted = m_rows.emplace(ageOf(row), item).first;
    // The order of the items is the order of the Tab key and of screen readers.
    if (inserted != m_rows.begin()) {
        item->stackBefore(std::prev(inserted)->second);
    }
    return item;
}

template <typename Condition> void LogColumn::dropRowsIf(const Condition &condition)
{
    std::erase_if(m_rows, [&](const auto &entry) {
        const auto &[age, item] = entry;
        if (!condition(age, item)) {
            return false;
        }
        item->setVisible(false);
        item->deleteLater();
        return true;
    });
}

qreal LogColumn::wholeHeight() const
{
    return std::max(0.0, m_heights.offset(m_heights.count()) - m_spacing);
}

void LogColumn::place(const std::optional<Anchor> &anchor)
{
    setImplicitHeight(std::min(wholeHeight(), maximumHeight));
    if (m_viewport) {
        const qreal middle = mapToItem(m_viewport->content(), {0, implicitHeight() / 2}).y();
        m_viewport->setFold(middle, wholeHeight() - implicitHeight());
    }
    moveRows();
    if (anchor) {
        m_viewport->moveBy(m_heights.offset(rowOf(anchor->age)) - anchor->distance - viewportTop());
    }
}

void LogColumn::moveRows()
{
    const qreal folded = m_viewport ? m_viewport->folded() : 0;
    for (const auto &[age, item] : m_rows) {
        item->setY(m_heights.offset(rowOf(age)) - folded);
    }
}
