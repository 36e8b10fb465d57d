#include "ui/platform/motionpreference.h"

#include <algorithm>
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

struct MotionSetting
{
    QLatin1StringView nameSpace;
    QLatin1StringView key;
    QLatin1StringView reduced; ///< The value, as text, that asks for less motion.
};

constexpr std::array MotionSettings{
    MotionSetting{"org.freedesktop.appearance"_L1, "reduced-motion"_L1, "1"_L1},
    MotionSetting{"org.gnome.desktop.interface"_L1, "enable-animations"_L1, "false"_L1},
    MotionSetting{"org.kde.kdeglobals.KDE"_L1, "AnimationDurationFactor"_L1, "0"_L1},
};

} // namespace

bool asksForReducedMotion(const PortalSettings &settings)
{
    return std::any_of(MotionSettings.begin(), MotionSettings.end(), [&](const MotionSetting &setting) {
        const QVariantMap values = settings.value(setting.nameSpace);
        return values.value(setting.key).toString() == setting.reduced;
    });
}

MotionPreference::MotionPreference(QObject *parent)
    : QObject(parent)
{
    askDesktop();
}

void MotionPreference::setReduced(bool reduced)
{
    if (m_reduced != reduced) {
        m_reduced = reduced;
        emit reducedChanged();
    }
}

#ifdef __APPLE__
void MotionPreference::askDesktop()
{
    const QSettings accessibility(u"apple.com"_s, u"universalaccess"_s);
    setReduced(accessibility.value(u"reduceMotion"_s).toBool());
}
#else
void MotionPreference::askDesktop()
{
    const QString portal = u"org.freedesktop.portal.Desktop"_s;
    qDBusRegisterMetaType<PortalSettings>();
    QDBusMessage question = QDBusMessage::createMethodCall(
        portal, u"/org/freedesktop/portal/desktop"_s, u"org.freedesktop.portal.Settings"_s, u"ReadAll"_s);
    QStringList nameSpaces;
    for (const MotionSetting &setting : MotionSettings) {
        nameSpaces.append(setting.nameSpace);
    }
    question << nameSpaces;
    // A desktop that has a portal runs it; nobody else's is to be started for this.
    question.setAutoStartService(false);
    const auto *answer = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher *call) {
        const QDBusPendingReply<PortalSettings> reply = *call;
        setReduced(!reply.isError() && asksForReducedMotion(reply.value()));
        call->deleteLater();
    });
}
#endif
