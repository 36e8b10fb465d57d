#include "ui/output/outputview.h"

#include "ui/accessibility/accessibleitem.h"
#include "ui/scrolling/scrollarea.h"

#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>
#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>
#include <QSGRectangleNode>
#include <QStyleHints>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

/// Some rows of a view. They are painted once and moved when they are scrolled. Not a `QQuickPaintedItem`:
/// with the software renderer each picture of that is copied once more.
class OutputStrip : public QQuickItem
{
public:
    explicit OutputStrip(OutputView *view)
        : QQuickItem(view)
        , m_view(view)
    {
        setFlag(ItemHasContents);
        // Behind the text cursor, which the view itself draws.
        setZ(-1);
    }

    /// Shows a part of the view with its corner on a whole pixel of the screen, where text is sharp.
    void cover(const QRectF &part)
    {
        const qreal ratio = window()->effectiveDevicePixelRatio();
        const QPointF corner = m_view->mapToScene(part.topLeft()) * ratio;
        setPosition(m_view->mapFromScene(floored(corner) / ratio));
        const QSize pixels(qCeil(part.width() * ratio), qCeil(part.height() * ratio));
        if (m_part != part || m_pixels != pixels) {
            m_part = part;
            m_pixels = pixels;
            setSize(QSizeF(pixels) / ratio);
            repaint();
        }
    }

    void repaint()
    {
        m_outdated = true;
        update();
    }

protected:
    QSGNode *updatePaintNode(QSGNode *node, UpdatePaintNodeData *) override
    {
        auto *image = static_cast<QSGImageNode *>(node);
        if (!image) {
            image = window()->createImageNode();
            image->setOwnsTexture(true);
            m_outdated = true;
        }
        if (std::exchange(m_outdated, false)) {
            image->setTexture(window()->createTextureFromImage(picture()));
            image->setRect(boundingRect());
        }
        return image;
    }

private:
    // Not to the pixel before when only the arithmetic's last digit is missing.
    static QPointF floored(QPointF point)
    {
        constexpr qreal rounding = 1.0 / 64;
        return {std::floor(point.x() + rounding), std::floor(point.y() + rounding)};
    }

    // Opaque, so that it is copied to the screen and not blended.
    [[nodiscard]] QImage picture() const
    {
        QImage image(m_pixels, QImage::Format_RGB32);
        image.setDevicePixelRatio(window()->effectiveDevicePixelRatio());
        QPainter painter(&image);
        painter.translate(-m_part.topLeft());
        m_view->paint(painter, QRectF(m_part.topLeft(), size()));
        return image;
    }

    OutputView *m_view;
    QRectF m_part;
    QSize m_pixels;
    bool m_outdated = true;
};

namespace {

// More rows would be painted at once when the next strip comes into view, fewer would more often be painted
// twice: the rows around a strip reach into it.
constexpr qsizetype rowsPerStrip = 16;
constexpr int scrollInterval = 16;
// Share of the distance by which the pointer is beyond the view.
constexpr qreal scrollSpeed = 0.25;

// The pointer may move a little between press and release of a click.
bool isJitter(QPointF from, QPointF to)
{
    return (to - from).manhattanLength() < QGuiApplication::styleHints()->startDragDistance() / 2.0;
}

bool keepsSelection(Qt::FocusReason reason)
{
    return reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason
        || reason == Qt::MenuBarFocusReason;
}

struct KeyMove
{
    QKeySequence::StandardKey moving;
    QKeySequence::StandardKey selecting;
    TextMove move;
};

constexpr std::array keyMoves{
    KeyMove{QKeySequence::MoveToNextChar, QKeySequence::SelectNextChar, TextMove::Right},
    KeyMove{QKeySequence::MoveToPreviousChar, QKeySequence::SelectPreviousChar, TextMove::Left},
    KeyMove{QKeySequence::MoveToNextWord, QKeySequence::SelectNextWord, TextMove::WordRight},
    KeyMove{QKeySequence::MoveToPreviousWord, QKeySequence::SelectPreviousWord, TextMove::WordLeft},
    KeyMove{QKeySequence::MoveToPreviousLine, QKeySequence::SelectPreviousLine, TextMove::RowUp},
    KeyMove{QKeySequence::MoveToNextLine, QKeySequence::SelectNextLine, TextMove::RowDown},
    KeyMove{QKeySequence::MoveToPreviousPage, QKeySequence::SelectPreviousPage, TextMove::PageUp},
    KeyMove{QKeySequence::MoveToNextPage, QKeySequence::SelectNextPage, TextMove::PageDown},
    KeyMove{QKeySequence::MoveToStartOfLine, QKeySequence::SelectStartOfLine, TextMove::RowStart},
    KeyMove{QKeySequence::MoveToEndOfLine, QKeySequence::SelectEndOfLine, TextMove::RowEnd},
    KeyMove{QKeySequence::MoveToStartOfBlock, QKeySequence::SelectStartOfBlock, TextMove::LineStart},
    KeyMove{QKeySequence::MoveToEndOfBlock, QKeySequence::SelectEndOfBlock, TextMove::LineEnd},
    KeyMove{QKeySequence::MoveToStartOfDocument, QKeySequence::SelectStartOfDocument, TextMove::TextStart},
    KeyMove{QKeySequence::MoveToEndOfDocument, QKeySequence::SelectEndOfDocument, TextMove::TextEnd},
};

} // namespace

OutputView::OutputView(QQuickItem *parent)
    : QQuickItem(parent)
{
    setFlag(ItemHasContents);
    setAcceptedMouseButtons(Qt::LeftButton);
    setActiveFocusOnTab(true);
    setCursor(Qt::IBeamCursor);
    connect(this, &OutputView::colorsChanged, this, &OutputView::repaint);
}

OutputView::~OutputView() = default;

void OutputView::setSource(const QString &source)
{
    if (m_source == source) {
        return;
    }
    const QString before = std::exchange(m_source, source);
    const TextChange change = changeBetween(before, m_source);
    rememberPlace();
    m_place->position = afterChange({m_place->position, m_place->position}, change).cursor;
    rewrap();
    emit sourceChanged();
    announceChange(change, before);
    setSelection(afterChange(m_selection, change));
}

void OutputView::setFont(const QFont &font)
{
    if (m_font != font) {
        m_font = font;
        rememberPlace();
        rewrap();
        emit fontChanged();
    }
}

void OutputView::componentComplete()
{
    QQuickItem::componentComplete();
    rewrap();
}

void OutputView::geometryChange(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.width() != oldGeometry.width()) {
        rememberPlace();
        rewrap();
    }
}

void OutputView::itemChange(ItemChange change, const ItemChangeData &data)
{
    QQuickItem::itemChange(change, data);
    if (change == ItemSceneChange) {
        disconnect(m_frames);
        if (data.window) {
            // After layout, before painting.
            m_frames =
                connect(data.window, &QQuickWindow::afterAnimating, this, &OutputView::showVisiblePart);
        }
    }
}

void OutputView::rewrap()
{
    if (!isComponentComplete()) {
        return;
    }
    m_rows.setFont(m_font);
    m_rows.wrap(m_source, width());
    polish();
    setImplicitHeight(static_cast<qreal>(m_rows.count()) * m_rows.rowHeight());
    repaint();
    update();
}

// Keeps the row of the last time if it is still the first one in view: otherwise each change of the width
// would add a rounding error.
void OutputView::rememberPlace()
{
    const qreal top = visiblePart().top();
    const qsizetype row = rowAtY(top);
    if (!m_place || m_rows.rowOf(m_place->position) != row) {
        m_place = Place{m_rows.start(row), static_cast<qreal>(row) * m_rows.rowHeight() - top};
    }
    m_placeDue = top > 0;
}

void OutputView::keepPlace()
{
    ScrollArea *view = ScrollArea::around(*this);
    if (m_placeDue && view) {
        const qreal top = cursorAt(m_place->position).top() - m_place->distance;
        view->moveBy(top - mapFromItem(view, QPointF()).y());
    }
}

// The layout around it may change later in this turn, so this is repeated before the frame.
void OutputView::updatePolish()
{
    keepPlace();
}

void OutputView::showVisiblePart()
{
    if (!isVisible()) {
        return;
    }
    keepPlace();
    m_placeDue = false;
    const QRectF part = visiblePart();
    const qreal stripHeight = static_cast<qreal>(rowsPerStrip) * m_rows.rowHeight();
    const auto first = static_cast<qsizetype>(std::floor(part.top() / stripHeight));
    const auto behind =
        part.isEmpty() ? first : static_cast<qsizetype>(std::ceil(part.bottom() / stripHeight));
    std::erase_if(m_strips, [=](const auto &strip) { return strip.first < first || strip.first >= behind; });
    for (qsizetype number = first; number < behind; ++number) {
        std::unique_ptr<OutputStrip> &strip = m_strips[number];
        if (!strip) {
            strip = std::make_unique<OutputStrip>(this);
        }
        const QRectF rows(0, static_cast<qreal>(number) * stripHeight, width(), stripHeight);
        strip->cover(rows.intersected(boundingRect()));
    }
    m_rows.keepLayouts(rowAtY(part.top() - stripHeight), rowAtY(part.bottom() + stripHeight));
}

void OutputView::repaint()
{
    for (const auto &[number, strip] : m_strips) {
        strip->repaint();
    }
}

QRectF OutputView::visiblePart() const
{
    const ScrollArea *view = ScrollArea::around(*this);
    return view ? mapRectFromItem(view, view->boundingRect()).intersected(boundingRect()) : boundingRect();
}

qsizetype OutputView::rowAtY(qreal y) const
{
    return std::clamp<qsizetype>(static_cast<qsizetype>(std::floor(y / m_rows.rowHeight())), 0,
                                 m_rows.count() - 1);
}

qsizetype OutputView::positionAt(QPointF point) const
{
    return m_rows.positionAt(rowAtY(point.y()), point.x());
}

qsizetype OutputView::characterAt(QPointF point) const
{
    return m_rows.positionAt(rowAtY(point.y()), point.x(), QTextLine::CursorOnCharacter);
}

QRectF OutputView::cursorAt(qsizetype position) const
{
    const qsizetype row = m_rows.rowOf(position);
    const qreal x = std::min(m_rows.xOf(row, position), std::max(0.0, width() - 1));
    return {x, static_cast<qreal>(row) * m_rows.rowHeight(), 1, m_rows.rowHeight()};
}

QRectF OutputView::characterRect(qsizetype position) const
{
    QRectF rect = cursorAt(position);
    const std::vector<RowSpan> spans =
        m_rows.spans(m_rows.rowOf(position), position, nextCharacter(m_rows, position));
    if (!spans.empty()) {
        rect.setLeft(spans.front().left);
        rect.setRight(spans.back().right);
    }
    return rect;
}

void OutputView::paint(QPainter &painter, const QRectF &part) const
{
    painter.fillRect(part, m_background);
    // Tall glyphs reach into the rows around them.
    const qsizetype first = std::max<qsizetype>(0, rowAtY(part.top()) - 1);
    const qsizetype last = rowAtY(part.bottom());
    for (qsizetype row = first; row <= last; ++row) {
        const QPointF topLeft(0, static_cast<qreal>(row) * m_rows.rowHeight());
        painter.setPen(m_color);
        m_rows.draw(painter, row, topLeft);
        painter.setPen(m_selectedTextColor);
        for (const RowSpan &span : m_rows.spans(row, m_selection.start(), m_selection.end())) {
            const QRectF selected(topLeft.x() + span.left, topLeft.y(), span.right - span.left,
                                  m_rows.rowHeight());
            painter.fillRect(selected, m_selectionColor);
            painter.setClipRect(selected);
            m_rows.draw(painter, row, topLeft);
            painter.setClipping(false);
        }
    }
}

QSGNode *OutputView::updatePaintNode(QSGNode *node, UpdatePaintNodeData *)
{
    auto *cursor = static_cast<QSGRectangleNode *>(node);
    if (!m_cursorShown) {
        delete cursor;
        return nullptr;
    }
    if (!cursor) {
        cursor = window()->createRectangleNode();
    }
    // On whole device pixels.
    const qreal ratio = window()->effectiveDevicePixelRatio();
    QRectF rect = cursorRectangle();
    rect.moveLeft(std::round(rect.left() * ratio) / ratio);
    cursor->setRect(rect);
    cursor->setColor(m_color);
    return cursor;
}

QString OutputView::selectedText() const
{
    return m_source.sliced(m_selection.start(), m_selection.end() - m_selection.start());
}

void OutputView::select(int start, int end)
{
    const qsizetype size = m_source.size();
    setSelection({std::clamp<qsizetype>(start, 0, size), std::clamp<qsizetype>(end, 0, size)});
}

void OutputView::selectAll()
{
    setSelection({0, m_source.size()});
    offerSelection();
}

void OutputView::deselect()
{
    setSelection({m_selection.cursor, m_selection.cursor});
}

void OutputView::selectWordAt(QPointF point)
{
    const qsizetype position = characterAt(point);
    if (position >= selectionStart() && position < selectionEnd()) {
        return;
    }
    const TextRange word = wordAt(m_source, position);
    setSelection({word.start, word.end});
    offerSelection();
}

void OutputView::setCursorPosition(qsizetype position)
{
    const qsizetype bounded = std::clamp<qsizetype>(position, 0, m_source.size());
    setSelection({bounded, bounded});
    emit cursorMoved();
}

void OutputView::copy() const
{
    if (hasSelection()) {
        QGuiApplication::clipboard()->setText(selectedText());
    }
}

// The primary selection, where the platform has one: the middle button pastes it.
void OutputView::offerSelection() const
{
    QClipboard *clipboard = QGuiApplication::clipboard();
    if (hasSelection() && clipboard->supportsSelection()) {
        clipboard->setText(selectedText(), QClipboard::Selection);
    }
}

void OutputView::setSelection(const TextSelection &selection)
{
    m_targetX.reset();
    if (m_selection == selection) {
        return;
    }
    const TextSelection before = std::exchange(m_selection, selection);
    repaint();
    showCursor();
    emit selectionChanged();
    announceSelection(before);
}

void OutputView::announceSelection(const TextSelection &before)
{
    if (before.cursor != m_selection.cursor) {
        QAccessibleTextCursorEvent event(this, static_cast<int>(m_selection.cursor));
        QAccessible::updateAccessibility(&event);
    }
    if (!before.isEmpty() || hasSelection()) {
        QAccessibleTextSelectionEvent event(this, static_cast<int>(selectionStart()),
                                            static_cast<int>(selectionEnd()));
        QAccessible::updateAccessibility(&event);
    }
}

// Only the changed part, so that a screen reader keeps its place in the text.
void OutputView::announceChange(const TextChange &change, const QString &before)
{
    const auto part = [](const QString &text, qsizetype start, qsizetype end) {
        return speakable(text.sliced(start, end - start));
    };
    QAccessibleTextUpdateEvent event(this, static_cast<int>(change.start),
                                     part(before, change.start, change.oldEnd),
                                     part(m_source, change.start, change.newEnd));
    QAccessible::updateAccessibility(&event);
}

qsizetype OutputView::rowsPerPage() const
{
    return std::max<qsizetype>(1, static_cast<qsizetype>(visiblePart().height() / m_rows.rowHeight()) - 1);
}

bool OutputView::follow(TextMove move, bool selects)
{
    TextSelection next = m_selection;
    std::optional<qreal> targetX;
    if (isVertical(move)) {
        const qsizetype distance = move == TextMove::RowUp || move == TextMove::RowDown ? 1 : rowsPerPage();
        const qsizetype row = m_rows.rowOf(m_selection.cursor);
        const bool isUp = move == TextMove::RowUp || move == TextMove::PageUp;
        const qsizetype to =
            std::clamp<qsizetype>(row + (isUp ? -distance : distance), 0, m_rows.count() - 1);
        targetX = m_targetX.value_or(m_rows.xOf(row, m_selection.cursor));
        next.cursor =
            to == row ? next.cursor : std::min(m_rows.positionAt(to, *targetX), lastInRow(m_rows, to));
    } else if (hasSelection() && !selects && (move == TextMove::Left || move == TextMove::Right)) {
        // Leave the selection on that side.
        const bool toStart =
            (move == TextMove::Left) != m_rows.isRightToLeft(m_rows.rowOf(m_selection.cursor));
        next.cursor = toStart ? selectionStart() : selectionEnd();
    } else {
        next.cursor = moved(m_rows, m_selection.cursor, move);
    }
    next.anchor = selects ? next.anchor : next.cursor;
    if (next == m_selection) {
        return false;
    }
    setSelection(next);
    m_targetX = targetX;
    offerSelection();
    emit cursorMoved();
    return true;
}

void OutputView::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Copy)) {
        copy();
        return;
    }
    if (event->matches(QKeySequence::SelectAll)) {
        selectAll();
        return;
    }
    const auto key = std::find_if(keyMoves.begin(), keyMoves.end(), [event](const KeyMove &keyMove) {
        return event->matches(keyMove.moving) || event->matches(keyMove.selecting);
    });
    // At the end of the text the key scrolls the page.
    event->setAccepted(key != keyMoves.end() && follow(key->move, event->matches(key->selecting)));
}

TextRange OutputView::unitAt(QPointF point) const
{
    switch (m_unit) {
    case Unit::Word:
        return wordAt(m_source, characterAt(point));
    case Unit::Line:
        return lineAt(m_source, characterAt(point));
    case Unit::Character:
        break;
    }
    const qsizetype position = positionAt(point);
    return {position, position};
}

void OutputView::mousePressEvent(QMouseEvent *event)
{
    const QStyleHints &hints = *QGuiApplication::styleHints();
    const bool isThird = m_unit == Unit::Word
        && event->timestamp() - m_pressedTime < static_cast<quint64>(hints.mouseDoubleClickInterval())
        && (event->scenePosition() - m_pressedAt).manhattanLength() < hints.mouseDoubleClickDistance();
    forceActiveFocus(Qt::MouseFocusReason);
    press(*event, isThird ? Unit::Line : Unit::Character);
}

void OutputView::mouseDoubleClickEvent(QMouseEvent *event)
{
    press(*event, Unit::Word);
}

void OutputView::press(const QMouseEvent &event, Unit unit)
{
    m_unit = unit;
    m_pressedTime = event.timestamp();
    m_pressedAt = event.scenePosition();
    m_dragged = false;
    m_pressedUnit = unitAt(event.position());
    if (unit != Unit::Character) {
        setSelection({m_pressedUnit.start, m_pressedUnit.end});
        return;
    }
    const qsizetype last = lastInRow(m_rows, rowAtY(event.position().y()));
    const qsizetype position = std::min(m_pressedUnit.start, last);
    const bool extends = event.modifiers().testFlag(Qt::ShiftModifier);
    const qsizetype anchor = extends ? m_selection.anchor : position;
    m_pressedUnit = {anchor, anchor};
    setSelection({anchor, position});
}

void OutputView::mouseMoveEvent(QMouseEvent *event)
{
    m_pointer = event->scenePosition();
    m_dragged = m_dragged || !isJitter(m_pressedAt, m_pointer);
    if (!m_dragged) {
        return;
    }
    extendToPointer();
    if (!m_scrolling.isActive()) {
        m_scrolling.start(scrollInterval, this);
    }
}

void OutputView::mouseReleaseEvent(QMouseEvent *)
{
    offerSelection();
}

// Comes after each release, and when something else takes the mouse.
void OutputView::mouseUngrabEvent()
{
    m_scrolling.stop();
}

// How far the pointer is above a view, which counts as negative, or below it.
qreal OutputView::pointerBeyond(const QQuickItem &view) const
{
    const qreal y = view.mapFromScene(m_pointer).y();
    return y - std::clamp(y, 0.0, view.height());
}

void OutputView::extendToPointer()
{
    const QRectF part = visiblePart();
    const QPointF point = mapFromScene(m_pointer);
    const TextRange here = unitAt({point.x(), std::clamp(point.y(), part.top(), part.bottom())});
    const bool isBefore = here.start < m_pressedUnit.start;
    setSelection(isBefore ? TextSelection{m_pressedUnit.end, here.start}
                          : TextSelection{m_pressedUnit.start, std::max(here.end, m_pressedUnit.end)});
}

// Goes on while the pointer rests, and is faster the farther away the pointer is.
void OutputView::scrollOn()
{
    if (ScrollArea *view = ScrollArea::around(*this)) {
        const qreal step = pointerBeyond(*view) * scrollSpeed;
        view->setContentY(view->contentY() + (step < 0 ? std::floor(step) : std::ceil(step)));
        extendToPointer();
    }
}

void OutputView::focusInEvent(QFocusEvent *event)
{
    QQuickItem::focusInEvent(event);
    showCursor();
}

void OutputView::focusOutEvent(QFocusEvent *event)
{
    QQuickItem::focusOutEvent(event);
    if (!keepsSelection(event->reason())) {
        deselect();
    }
    showCursor();
}

// Restarts the blinking with a visible phase, so that a moving cursor can be followed.
void OutputView::showCursor()
{
    m_cursorShown = hasActiveFocus();
    const int flash = QGuiApplication::styleHints()->cursorFlashTime() / 2;
    if (m_cursorShown && flash > 0) {
        m_blink.start(flash, this);
    } else {
        m_blink.stop();
    }
    update();
}

void OutputView::timerEvent(QTimerEvent *event)
{
    if (event->timerId() == m_blink.timerId()) {
        m_cursorShown = !m_cursorShown;
        update();
    } else if (event->timerId() == m_scrolling.timerId()) {
        scrollOn();
    }
}
