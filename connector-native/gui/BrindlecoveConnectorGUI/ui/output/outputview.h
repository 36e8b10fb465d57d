#pragma once

#include "ui/output/textmoves.h"
#include "ui/output/textrows.h"

#include <QBasicTimer>
#include <QColor>
#include <QQuickItem>

#include <map>
#include <memory>
#include <optional>

class OutputStrip;
class ScrollArea;

/// Shows a read-only text of any length, which can be selected by mouse and keyboard and is copied exactly.
/// Its height is known as soon as its width is, but only the visible rows are laid out and painted. Positions
/// are positions of the text. Main thread only.
class OutputView : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString source READ source WRITE setSource NOTIFY sourceChanged)
    /// The accessible name.
    Q_PROPERTY(QString accessibleTitle MEMBER m_title NOTIFY accessibleTitleChanged)
    Q_PROPERTY(QFont font READ font WRITE setFont NOTIFY fontChanged)
    Q_PROPERTY(QColor color MEMBER m_color NOTIFY colorsChanged)
    /// The background's colour.
    Q_PROPERTY(QColor background MEMBER m_background NOTIFY colorsChanged)
    Q_PROPERTY(QColor selectionColor MEMBER m_selectionColor NOTIFY colorsChanged)
    Q_PROPERTY(QColor selectedTextColor MEMBER m_selectedTextColor NOTIFY colorsChanged)
    Q_PROPERTY(bool hasSelection READ hasSelection NOTIFY selectionChanged)
    Q_PROPERTY(QString selectedText READ selectedText NOTIFY selectionChanged)
    Q_PROPERTY(qsizetype selectionStart READ selectionStart NOTIFY selectionChanged)
    Q_PROPERTY(qsizetype selectionEnd READ selectionEnd NOTIFY selectionChanged)
    Q_PROPERTY(qsizetype cursorPosition READ cursorPosition WRITE setCursorPosition NOTIFY selectionChanged)
    /// Notified only when the user has moved the text cursor by keyboard: it is to be scrolled into view.
    Q_PROPERTY(QRectF cursorRectangle READ cursorRectangle NOTIFY cursorMoved)

public:
    explicit OutputView(QQuickItem *parent = nullptr);
    ~OutputView() override;

    [[nodiscard]] QString source() const { return m_source; }
    void setSource(const QString &source);
    [[nodiscard]] QFont font() const { return m_font; }
    void setFont(const QFont &font);

    [[nodiscard]] bool hasSelection() const { return !m_selection.isEmpty(); }
    [[nodiscard]] QString selectedText() const;
    [[nodiscard]] qsizetype selectionStart() const { return m_selection.start(); }
    [[nodiscard]] qsizetype selectionEnd() const { return m_selection.end(); }
    [[nodiscard]] qsizetype cursorPosition() const { return m_selection.cursor; }
    void setCursorPosition(qsizetype position);
    [[nodiscard]] QRectF cursorRectangle() const { return cursorAt(m_selection.cursor); }
    Q_INVOKABLE void select(int start, int end);
    Q_INVOKABLE void selectAll();
    Q_INVOKABLE void deselect();
    /// Selects the word at a point, unless that is selected already, maybe as part of more.
    Q_INVOKABLE void selectWordAt(QPointF point);
    Q_INVOKABLE void copy() const;

    /// The box of a character; of a line end, the place behind the line.
    [[nodiscard]] QRectF characterRect(qsizetype position) const;
    /// The character at a point, or the nearest one of its row.
    [[nodiscard]] qsizetype characterAt(QPointF point) const;

    void paint(QPainter &painter, const QRectF &part) const;

signals:
    void sourceChanged();
    void accessibleTitleChanged();
    void fontChanged();
    void colorsChanged();
    void selectionChanged();
    void cursorMoved();

protected:
    void componentComplete() override;
    void geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry) override;
    void updatePolish() override;
    void itemChange(ItemChange change, const ItemChangeData &data) override;
    QSGNode *updatePaintNode(QSGNode *node, UpdatePaintNodeData *data) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseUngrabEvent() override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    /// The unit of a drag's selection, by the number of presses in a row that began it.
    enum class Unit { Character, Word, Line };
    /// A position whose row keeps its distance from the top of the view when the layout changes.
    struct Place
    {
        qsizetype position;
        qreal distance;
    };

    [[nodiscard]] QRectF visiblePart() const;
    [[nodiscard]] qsizetype rowAtY(qreal y) const;
    [[nodiscard]] qsizetype positionAt(QPointF point) const;
    [[nodiscard]] QRectF cursorAt(qsizetype position) const;
    [[nodiscard]] TextRange unitAt(QPointF point) const;
    [[nodiscard]] qsizetype rowsPerPage() const;
    [[nodiscard]] qreal pointerBeyond(const QQuickItem &view) const;

    bool follow(TextMove move, bool selects);
    void rewrap();
    void rememberPlace();
    void keepPlace();
    void showVisiblePart();
    void repaint();
    void setSelection(const TextSelection &selection);
    void offerSelection() const;
    void announceSelection(const TextSelection &before);
    void announceChange(const TextChange &change, const QString &before);
    void press(const QMouseEvent &event, Unit unit);
    void extendToPointer();
    void scrollOn();
    void showCursor();

    QString m_source;
    QString m_title;
    QFont m_font;
    QColor m_color;
    QColor m_background;
    QColor m_selectionColor;
    QColor m_selectedTextColor;

    TextRows m_rows;
    std::map<qsizetype, std::unique_ptr<OutputStrip>> m_strips; ///< Those in view, by their number.
    QMetaObject::Connection m_frames;
    std::optional<Place> m_place;
    bool m_placeDue = false;

    TextSelection m_selection;
    std::optional<qreal> m_targetX; ///< The column of a text cursor that moves from row to row.
    bool m_cursorShown = false;
    QBasicTimer m_blink;

    Unit m_unit = Unit::Character;
    TextRange m_pressedUnit;
    bool m_dragged = false;
    QPointF m_pressedAt; ///< This and the next in the window's coordinates.
    QPointF m_pointer;
    quint64 m_pressedTime = 0;
    QBasicTimer m_scrolling;
};
