#pragma once

#include "ui/scrolling/rowheights.h"
#include "ui/scrolling/scrollarea.h"

#include <QAbstractItemModel>
#include <QPointer>
#include <QQmlComponent>
#include <QQuickItem>

#include <map>
#include <optional>

/// A column of rows as long as its model, of which only those near the viewport exist as items, however many
/// the model has. Rows come in at the front; what the user is looking at stays where it is. A row's delegate
/// gets the model's roles as properties of their names and the column's width, and must know its
/// implicitHeight at once. The row with the keyboard focus exists wherever it lies, and so do its neighbours,
/// which Tab reaches next, and the first and the last row, where Tab enters the column.
///
/// A renderer's single precision resolves whole pixels up to 16.7 million, which half a million rows exceed.
/// So the column is never taller than a million pixels; the rest is left out by the scroll area's fold.
class LogColumn : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QAbstractItemModel *model READ model WRITE setModel)
    Q_PROPERTY(QQmlComponent *delegate MEMBER m_delegate)
    Q_PROPERTY(ScrollArea *viewport READ viewport WRITE setViewport)
    Q_PROPERTY(qreal spacing MEMBER m_spacing)
    /// The estimated height of a row that is not laid out yet.
    Q_PROPERTY(qreal typicalHeight MEMBER m_typicalHeight)

public:
    using QQuickItem::QQuickItem;

    [[nodiscard]] QAbstractItemModel *model() const { return m_model; }
    void setModel(QAbstractItemModel *model);
    [[nodiscard]] ScrollArea *viewport() const { return m_viewport; }
    void setViewport(ScrollArea *viewport);

protected:
    void componentComplete() override;
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;
    void updatePolish() override;

private:
    /// A row's number counted from the oldest; it does not change when rows are added.
    using Age = int;

    struct Anchor
    {
        Age age;
        qreal distance; ///< From the top of the viewport to the row.
    };

    struct Range
    {
        int first;
        int last;
        [[nodiscard]] bool contains(int row) const { return first <= row && row <= last; }
        friend bool operator==(const Range &, const Range &) = default;
    };
    static constexpr Range nowhere{0, -1};

    [[nodiscard]] Age ageOf(int row) const { return m_heights.count() - 1 - row; }
    [[nodiscard]] int rowOf(Age age) const { return m_heights.count() - 1 - age; }
    [[nodiscard]] QVariantMap rolesOf(int row) const;
    [[nodiscard]] qreal wholeHeight() const;
    [[nodiscard]] qreal viewportTop() const;
    [[nodiscard]] std::optional<Anchor> anchor() const;
    [[nodiscard]] Range rowsInView() const;
    [[nodiscard]] Range rowsAroundFocus() const;
    [[nodiscard]] Range withNeighbours(int first, int last) const;

    void restart();
    void followFocus();
    void insertRows(const QModelIndex &parent, int first, int last);
    void realise(Range range);
    template <typename Condition> void dropRowsIf(const Condition &condition);
    QQuickItem *createRow(int row);
    void measure(int row, const QQuickItem &item);
    void place(const std::optional<Anchor> &anchor);
    void moveRows();

    QPointer<QAbstractItemModel> m_model;
    QQmlComponent *m_delegate = nullptr;
    QPointer<ScrollArea> m_viewport;
    qreal m_spacing = 0;
    qreal m_typicalHeight = 100;

    RowHeights m_heights;
    std::map<Age, QQuickItem *> m_rows;
    QMetaObject::Connection m_windowFocus;
};
