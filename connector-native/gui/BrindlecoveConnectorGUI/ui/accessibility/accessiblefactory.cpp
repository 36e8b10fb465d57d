#include "ui/accessibility/accessiblefactory.h"

#include "ui/accessibility/accessibleitem.h"
#include "ui/accessibility/accessiblemenuentry.h"
#include "ui/accessibility/accessibletext.h"
#include "ui/accessibility/secretguard.h"
#include "ui/controls/pressarea.h"

#include <QAccessible>
#include <QMetaProperty>

#include <algorithm>
#include <array>

namespace {

struct Maker
{
    const char *className;
    const char *property; ///< Which items of the class are meant: all that have this property.
    QAccessibleInterface *(*make)(QQuickItem *item);
};

// Qt 6.4: the classes of Qt Quick are not public. An item is known by the name of its class and the
// properties of its type: it is asked for before its bindings have run.
constexpr std::array makers{
    Maker{"QQuickText", "text",
          [](QQuickItem *item) -> QAccessibleInterface * { return new AccessibleLabel(item); }},
    Maker{"QQuickMenuItem", "text",
          [](QQuickItem *item) -> QAccessibleInterface * { return new AccessibleMenuEntry(item); }},
    Maker{"PressArea", "title",
          [](QQuickItem *item) -> QAccessibleInterface * {
              return new AccessiblePressArea(static_cast<PressArea *>(item));
          }},
    Maker{"OutputView", "source",
          [](QQuickItem *item) -> QAccessibleInterface * { return new AccessibleOutput(item); }},
    Maker{"QQuickTextInput", "accessibleTitle",
          [](QQuickItem *item) -> QAccessibleInterface * { return new AccessibleField(item); }},
};

// A masked field is recognised by the type of its guard, whatever the property is called: so none can be
// marked without being guarded.
bool isSecret(const QQuickItem &item)
{
    if (!item.inherits("QQuickTextInput")) {
        return false;
    }
    const QMetaObject &type = *item.metaObject();
    for (int property = 0; property < type.propertyCount(); ++property) {
        if (type.property(property).metaType() == QMetaType::fromType<SecretGuard *>()) {
            return true;
        }
    }
    return false;
}

QAccessibleInterface *makeInterface(const QString &, QObject *object)
{
    auto *item = qobject_cast<QQuickItem *>(object);
    if (!item) {
        return nullptr;
    }
    if (isSecret(*item)) {
        return new AccessibleSecret(item);
    }
    const auto fits = [item](const Maker &maker) {
        return item->inherits(maker.className) && item->metaObject()->indexOfProperty(maker.property) >= 0;
    };
    const auto maker = std::find_if(makers.begin(), makers.end(), fits);
    return maker == makers.end() ? nullptr : maker->make(item);
}

} // namespace

void installAccessibleFactory()
{
    // The factory is asked about an item's own type before Qt Quick's is about the classes it derives from.
    QAccessible::installFactory(makeInterface);
}
