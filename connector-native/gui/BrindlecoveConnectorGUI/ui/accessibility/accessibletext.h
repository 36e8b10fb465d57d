#pragma once

#include "ui/accessibility/accessibleitem.h"

class OutputView;

/// An item whose text can be read piece by piece and in which a cursor moves: a text input of Qt Quick or
/// an output. What its text is, as far as assistive technologies are concerned, is the derived class's to
/// say; it has one character for each position of the cursor.
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

    /// Where in the item the places that it gives for its characters are counted from.
    [[nodiscard]] virtual QPointF textOrigin() const { return {}; }
    [[nodiscard]] QRectF rectangleOf(int position) const;

private:
    [[nodiscard]] qsizetype place(int offset, qsizetype size) const;
};

/// What the connector printed, whole.
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

/// A text input.
class AccessibleField : public AccessibleText
{
public:
    using AccessibleText::AccessibleText;

    [[nodiscard]] QAccessible::State state() const override;

protected:
    [[nodiscard]] QString content() const override
    {
        return speakable(object()->property("text").toString());
    }
    [[nodiscard]] QPointF textOrigin() const override;
};

/// A masked text input: that it is a password field, how many characters it holds and where the cursor is,
/// but none of the characters. Qt's own interface would tell them.
class AccessibleSecret : public AccessibleField
{
public:
    using AccessibleField::AccessibleField;

    [[nodiscard]] QAccessible::State state() const override;

protected:
    [[nodiscard]] QString content() const override { return bulletsOf(*item()); }
};
