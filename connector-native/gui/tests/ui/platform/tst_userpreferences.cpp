#include "support/testprogram.h"
#include "ui/platform/userpreferences.h"

using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(PortalSettings)

// Which settings of a desktop ask for less motion, and which for more contrast.
class TestUserPreferences : public QObject
{
    Q_OBJECT

private slots:
    void asksForLess_data()
    {
        const QString any = u"org.freedesktop.appearance"_s;
        const QString gnome = u"org.gnome.desktop.interface"_s;
        const QString kde = u"org.kde.kdeglobals.KDE"_s;
        const QString reduced = u"reduced-motion"_s;
        const QString animations = u"enable-animations"_s;
        const QString factor = u"AnimationDurationFactor"_s;

        QTest::addColumn<PortalSettings>("settings");
        QTest::addColumn<bool>("less");
        QTest::newRow("no settings") << PortalSettings{} << false;
        QTest::newRow("empty name spaces") << PortalSettings{{any, {}}, {gnome, {}}, {kde, {}}} << false;
        QTest::newRow("reduced") << PortalSettings{{any, {{reduced, 1U}}}} << true;
        QTest::newRow("no preference") << PortalSettings{{any, {{reduced, 0U}}}} << false;
        QTest::newRow("a preference not known yet") << PortalSettings{{any, {{reduced, 2U}}}} << false;
        QTest::newRow("GNOME without animations") << PortalSettings{{gnome, {{animations, false}}}} << true;
        QTest::newRow("GNOME with animations") << PortalSettings{{gnome, {{animations, true}}}} << false;
        QTest::newRow("KDE without animations") << PortalSettings{{kde, {{factor, u"0"_s}}}} << true;
        QTest::newRow("KDE with fast animations") << PortalSettings{{kde, {{factor, u"0.25"_s}}}} << false;
        QTest::newRow("KDE with slow animations") << PortalSettings{{kde, {{factor, u"2"_s}}}} << false;
        QTest::newRow("KDE with an empty factor") << PortalSettings{{kde, {{factor, QString()}}}} << false;
        QTest::newRow("one of three asks") << PortalSettings{{any, {{reduced, 0U}}},
                                                             {gnome, {{animations, true}}},
                                                             {kde, {{factor, u"0"_s}}}}
                                           << true;
        QTest::newRow("the right key in another name space")
            << PortalSettings{{kde, {{reduced, 1U}}}} << false;
        QTest::newRow("another key of the right name space")
            << PortalSettings{{any, {{u"contrast"_s, 1U}, {u"color-scheme"_s, 1U}}}} << false;
    }

    void asksForLess()
    {
        QFETCH(const PortalSettings, settings);
        QTEST(wishesIn(settings).reducedMotion, "less");
    }

    void asksForMoreContrast_data()
    {
        const QString any = u"org.freedesktop.appearance"_s;
        const QString gnome = u"org.gnome.desktop.a11y.interface"_s;
        const QString contrast = u"contrast"_s;
        const QString high = u"high-contrast"_s;

        QTest::addColumn<PortalSettings>("settings");
        QTest::addColumn<bool>("more");
        QTest::newRow("no settings") << PortalSettings{} << false;
        QTest::newRow("more contrast") << PortalSettings{{any, {{contrast, 1U}}}} << true;
        QTest::newRow("no preference") << PortalSettings{{any, {{contrast, 0U}}}} << false;
        QTest::newRow("a preference not known yet") << PortalSettings{{any, {{contrast, 2U}}}} << false;
        QTest::newRow("GNOME with high contrast") << PortalSettings{{gnome, {{high, true}}}} << true;
        QTest::newRow("GNOME without") << PortalSettings{{gnome, {{high, false}}}} << false;
        QTest::newRow("one of two asks")
            << PortalSettings{{any, {{contrast, 0U}}}, {gnome, {{high, true}}}} << true;
        QTest::newRow("less motion only") << PortalSettings{{any, {{u"reduced-motion"_s, 1U}}}} << false;
    }

    void asksForMoreContrast()
    {
        QFETCH(const PortalSettings, settings);
        QTEST(wishesIn(settings).highContrast, "more");
    }

    void withoutADesktopNothingIsAskedFor()
    {
        const UserPreferences preferences;
        QVERIFY(!preferences.reducedMotion() && !preferences.highContrast());
        QCoreApplication::processEvents();
        QVERIFY(!preferences.reducedMotion() && !preferences.highContrast());
    }
};

static const TestClass<TestUserPreferences> testUserPreferences("tst_userpreferences");

#include "tst_userpreferences.moc"
