#include "ui/accessibility/textannouncer.h"

#include "ui/accessibility/accessibletext.h"
#include "ui/accessibility/textpieces.h"

#include <QAccessible>

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
    const TextChange change = changeBetween(before, m_announced);
    QAccessibleTextUpdateEvent event(item(), static_cast<int>(change.start),
                                     before.sliced(change.start, change.oldEnd - change.start),
                                     m_announced.sliced(change.start, change.newEnd - change.start));
    QAccessible::updateAccessibility(&event);
}

void TextAnnouncer::announceSelection()
{
    QAccessibleTextSelectionEvent event(item(), item()->property("selectionStart").toInt(),
                                        item()->property("selectionEnd").toInt());
    QAccessible::updateAccessibility(&event);
}
