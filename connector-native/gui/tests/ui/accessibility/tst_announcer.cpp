#include "support/testprogram.h"
#include "windowtesting.h"

#include <QtGui/qaccessible.h>
#include <QtQml/qqmlcomponent.h>
#include <QtQml/qqmlengine.h>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

QStringList spoken;

void listen(QAccessibleEvent *event)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    if (event->type() == QAccessible::Announcement)
        spoken.append(static_cast<QAccessibleAnnouncementEvent *>(event)->message());
#else
    const QAccessibleInterface *source = event->accessibleInterface();
    if (event->type() == QAccessible::ObjectShow && source->role() == QAccessible::Notification)
        spoken.append(source->text(QAccessible::Name));
#endif
}

QStringList spokenSoFar()
{
    QCoreApplication::processEvents();
    return std::exchange(spoken, {});
}

} // namespace

// Which changes of outcomes are spoken, and when.
class TestAnnouncer : public QObject
{
    Q_OBJECT

    QQmlEngine m_engine;
    TestWindow m_window;
    std::unique_ptr<QObject> m_announcer;

    void make(const QByteArray &before = {})
    {
        QQmlComponent component(&m_engine);
        component.setData("import BrindlecoveConnectorGUI\n"
                          "Announcer {\n"
                          "    property string binding: 'not bound'\n"
                          "    property int balance\n"
                          "    Outcome {"
                              + before
                              + " now: binding; words: 'Binding: ' + binding }\n"
                                "    Outcome { now: balance; words: 'Balance: ' + balance }\n"
                                "}",
                          QUrl());
        m_announcer.reset(component.create());
        QVERIFY2(m_announcer, qPrintable(component.errorString()));
        qobject_cast<QQuickItem *>(m_announcer.get())->setParentItem(m_window.contentItem());
    }

    void set(const char *name, const QVariant &value) { m_announcer->setProperty(name, value); }

private slots:
    void initTestCase()
    {
        m_engine.addImportPath(u":/"_s);
        QAccessible::setActive(true);
        QAccessible::installUpdateHandler(listen);
    }
    void cleanupTestCase() { QAccessible::installUpdateHandler(nullptr); }

    void whatIsThereAtFirstIsNotSpoken()
    {
        make();
        QCOMPARE(spokenSoFar(), QStringList());
    }

    void whatHasHappenedBeforeAnybodyListenedIsSpoken()
    {
        make("before: 'unknown';");
        QCOMPARE(spokenSoFar(), QStringList{u"Binding: not bound"_s});
    }

    void changesOfOneActionAreOneSentence()
    {
        make();
        static_cast<void>(spokenSoFar());
        set("balance", 12);
        set("binding", u"claimed"_s);
        set("binding", u"authorized"_s);
        QCOMPARE(spoken, QStringList());
        QCOMPARE(spokenSoFar(), QStringList{u"Binding: authorized, Balance: 12"_s});
        QCOMPARE(spokenSoFar(), QStringList());
    }

    void changesOfTwoActionsAreTwo()
    {
        make();
        static_cast<void>(spokenSoFar());
        set("balance", 12);
        QCOMPARE(spokenSoFar(), QStringList{u"Balance: 12"_s});
        set("balance", 13);
        QCOMPARE(spokenSoFar(), QStringList{u"Balance: 13"_s});
    }

    void whatIsAsItWasIsNotSpoken()
    {
        make();
        static_cast<void>(spokenSoFar());
        set("binding", u"authorized"_s);
        set("binding", u"not bound"_s);
        QCOMPARE(spokenSoFar(), QStringList());
    }
};

static const TestClass<TestAnnouncer> registered("tst_announcer");

#include "tst_announcer.moc"
