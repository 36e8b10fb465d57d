#include "ui/platform/userpreferences.h"

#include <array>

#ifdef __APPLE__
#include <QSettings>
#else
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#endif

using namespace Qt::StringLiterals;

namespace {

struct Setting
{
    bool UserWishes::*wish = nullptr;
    QLatin1StringView nameSpace;
    QLatin1StringView key;
    QLatin1StringView value; ///< The value, as text, that asks for it.
};

constexpr std::array knownSettings{
    Setting{&UserWishes::reducedMotion, "org.freedesktop.appearance"_L1, "reduced-motion"_L1, "1"_L1},
    Setting{&UserWishes::reducedMotion, "org.gnome.desktop.interface"_L1, "enable-animations"_L1, "false"_L1},
    Setting{&UserWishes::reducedMotion, "org.kde.kdeglobals.KDE"_L1, "AnimationDurationFactor"_L1, "0"_L1},
    Setting{&UserWishes::highContrast, "org.freedesktop.appearance"_L1, "contrast"_L1, "1"_L1},
    Setting{&UserWishes::highContrast, "org.gnome.desktop.a11y.interface"_L1, "high-contrast"_L1, "true"_L1},
};

} // namespace

UserWishes wishesIn(const PortalSettings &settings)
{
    UserWishes wishes;
    for (const Setting &setting : knownSettings) {
        const QVariantMap values = settings.value(setting.nameSpace);
        wishes.*setting.wish |= values.value(setting.key).toString() == setting.value;
    }
    return wishes;
}

UserPreferences::UserPreferences(QObject *parent)
    : QObject(parent)
{
    askDesktop();
}

void UserPreferences::setWishes(const UserWishes &wishes)
{
    if (m_wishes != wishes) {
        m_wishes = wishes;
        emit changed();
    }
}

#ifdef __APPLE__
void UserPreferences::askDesktop()
{
    const QSettings accessibility(u"apple.com"_s, u"universalaccess"_s);
    setWishes({accessibility.value(u"reduceMotion"_s).toBool(),
               accessibility.value(u"increaseContrast"_s).toBool()});
}
#else
void UserPreferences::askDesktop()
{
    const QString portal = u"org.freedesktop.portal.Desktop"_s;
    qDBusRegisterMetaType<PortalSettings>();
    QDBusMessage question = QDBusMessage::createMethodCall(
        portal, u"/org/freedesktop/portal/desktop"_s, u"org.freedesktop.portal.Settings"_s, u"ReadAll"_s);
    QStringList nameSpaces;
    for (const Setting &setting : knownSettings) {
        nameSpaces.append(setting.nameSpace);
    }
    nameSpaces.removeDuplicates();
    question << nameSpaces;
    // A desktop with a portal has started it already; this query must not start one.
    question.setAutoStartService(false);
    const auto *answer = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher *call) {
        const QDBusPendingReply<PortalSettings> reply = *call;
        setWishes(reply.isError() ? UserWishes() : wishesIn(reply.value()));
        call->deleteLater();
    });
}
#endif
