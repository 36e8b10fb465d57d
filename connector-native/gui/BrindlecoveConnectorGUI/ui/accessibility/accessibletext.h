#pragma once

#include "ui/accessibility/accessibleitem.h"

class OutputView;

/// An item whose text can be read piece by piece and in which a cursor moves: a text input of Qt Quick or
/// an output. The derived class decides which text is exposed; it has one character for each position of the
/// cursor.
class AccessibleText : public AccessibleItem, public QAccessibleTextInterface
{
public:
    using AccessibleItem::AccessibleItem;

    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::EditableText; }
    [[nodiscard]] QAccessible::State state() const override;
    void *interface_cast(QAccessible::InterfaceType type) override;

    void selection(int index, int *start, int *end) const override;
    [[nodiscard]] int selectionCount() const override;
    void addSelection(int start, int end) override { setSelection(0, start, end); }
    void removeSelection(int index) override;
    void setSelection(int index, int start, int end) override;
    [[nodiscard]] int cursorPosition() const override { return number("cursorPosition"); }
    void setCursorPosition(int position) override;
    using AccessibleItem::text;
    [[nodiscard]] QString text(int start, int end) const override;
    // Qt 6.4: what these do by default never returns for words and sentences at the end of many texts.
    [[nodiscard]] QString textBeforeOffset(int offset, QAccessible::TextBoundaryType kind, int *start,
                                           int *end) const override;
    [[nodiscard]] QString textAtOffset(int offset, QAccessible::TextBoundaryType kind, int *start,
                                       int *end) const override;
    [[nodiscard]] QString textAfterOffset(int offset, QAccessible::TextBoundaryType kind, int *start,
                                          int *end) const override;
    [[nodiscard]] int characterCount() const override { return static_cast<int>(content().size()); }
    [[nodiscard]] QRect characterRect(int offset) const override;
    [[nodiscard]] int offsetAtPoint(const QPoint &point) const override;
    void scrollToSubstring(int start, int end) override;
    [[nodiscard]] QString attributes(int offset, int *start, int *end) const override;

protected:
    [[nodiscard]] virtual QString content() const = 0;
    [[nodiscard]] QString name() const override { return object()->property("accessibleTitle").toString(); }
    [[nodiscard]] int number(const char *property) const { return object()->property(property).toInt(); }

    /// The origin, in the item, of the rectangles of its characters.
    [[nodiscard]] virtual QPointF textOrigin() const { return {}; }
    [[nodiscard]] QRectF rectangleOf(int position) const;
    [[nodiscard]] qsizetype place(int offset, qsizetype size) const;
};

/// An output, with its whole text.
class AccessibleOutput : public AccessibleText
{
public:
    using AccessibleText::AccessibleText;

    [[nodiscard]] QAccessible::State state() const override;
    [[nodiscard]] QRect characterRect(int offset) const override;
    [[nodiscard]] int offsetAtPoint(const QPoint &point) const override;

protected:
    [[nodiscard]] QString content() const override;

private:
    [[nodiscard]] OutputView *view() const;
};

/// As many bullets as a text input has characters.
[[nodiscard]] QString bulletsOf(const QQuickItem &input);

/// A text input. What an assistive technology writes into it is an edit like what an input method commits.
class AccessibleField : public AccessibleText, public QAccessibleEditableTextInterface
{
public:
    using AccessibleText::AccessibleText;

    [[nodiscard]] QAccessible::State state() const override;
    void *interface_cast(QAccessible::InterfaceType type) override;

    void setText(QAccessible::Text kind, const QString &text) override;
    void deleteText(int start, int end) override { replaceText(start, end, {}); }
    void insertText(int offset, const QString &text) override { replaceText(offset, offset, text); }
    void replaceText(int start, int end, const QString &text) override;

protected:
    [[nodiscard]] QString content() const override
    {
        return speakable(object()->property("text").toString());
    }
    [[nodiscard]] QPointF textOrigin() const override;
};

/// A masked text input: exposes that it is a password field, the number of its characters and the cursor,
/// but none of the characters, which Qt's own interface would expose.
class AccessibleSecret : public AccessibleField
{
public:
    using AccessibleField::AccessibleField;

    [[nodiscard]] QAccessible::State state() const override;

protected:
    [[nodiscard]] QString content() const override { return bulletsOf(*item()); }
};
