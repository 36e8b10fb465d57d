#include "ui/accessibility/textannouncer.h"

#include "ui/accessibility/accessibletext.h"

#include <QAccessible>

#include <algorithm>
#include <utility>

namespace {

QString toldTextOf(const QQuickItem &input)
{
    const bool isMasked = input.property("echoMode").toInt() != 0;
    return isMasked ? bulletsOf(input) : input.property("text").toString();
}

} // namespace

TextAnnouncer::TextAnnouncer(QObject *parent)
    : ItemFilter(parent)
{
    connect(this, &ItemFilter::itemChanged, this, &TextAnnouncer::watchText);
}

void TextAnnouncer::watchText()
{
    if (item()) {
        // The class of text inputs is not public, so their signals are known by their names only.
        connect(item(), SIGNAL(textChanged()), this, SLOT(announceChange()));
        connect(item(), SIGNAL(selectedTextChanged()), this, SLOT(announceSelection()));
        m_announced = toldTextOf(*item());
    }
}

// What is the same before and after is left out, so that a screen reader says only the character just typed.
void TextAnnouncer::announceChange()
{
    const QString before = std::exchange(m_announced, toldTextOf(*item()));
    const qsizetype shorter = std::min(before.size(), m_announced.size());
    const auto start =
        std::mismatch(before.begin(), before.begin() + shorter, m_announced.begin()).first - before.begin();
    const auto end =
        std::mismatch(before.rbegin(), before.rbegin() + (shorter - start), m_announced.rbegin()).first
        - before.rbegin();
    QAccessibleTextUpdateEvent event(item(), static_cast<int>(start),
                                     before.mid(start, before.size() - start - end),
                                     m_announced.mid(start, m_announced.size() - start - end));
    QAccessible::updateAccessibility(&event);
}

void TextAnnouncer::announceSelection()
{
    QAccessibleTextSelectionEvent event(item(), item()->property("selectionStart").toInt(),
                                        item()->property("selectionEnd").toInt());
    QAccessible::updateAccessibility(&event);
}
