#include "support/testprogram.h"
#include "ui/accessibility/announcement.h"
#include "ui/accessibility/announcer.h"
#include "windowtesting.h"

#include <QtGui/qaccessible.h>
#include <QtQml/qqmlcomponent.h>
#include <QtQml/qqmlengine.h>

#include <memory>

using namespace Qt::StringLiterals;

// Which changes of outcomes are spoken, and when.
class TestAnnouncer : public QObject
{
    Q_OBJECT

    QQmlEngine m_engine;
    TestWindow m_window;
    std::unique_ptr<QObject> m_announcer;
    QStringList m_spoken;

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
        auto *announcer = qobject_cast<Announcer *>(m_announcer.get());
        QVERIFY2(announcer, qPrintable(component.errorString()));
        announcer->setParentItem(m_window.contentItem());
        connect(announcer, &Announcer::spoken, this,
                [this](const QString &sentence) { m_spoken += sentence; });
    }

    void set(const char *name, const QVariant &value) { m_announcer->setProperty(name, value); }

    [[nodiscard]] QStringList spokenSoFar()
    {
        QCoreApplication::processEvents();
        return std::exchange(m_spoken, {});
    }

private slots:
    void initTestCase() { m_engine.addImportPath(u":/"_s); }
    void init() { m_spoken.clear(); }

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
        QCOMPARE(m_spoken, QStringList());
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

    void withoutAWindowNothingIsSpoken()
    {
        make();
        static_cast<void>(spokenSoFar());
        qobject_cast<QQuickItem *>(m_announcer.get())->setParentItem(nullptr);
        set("balance", 12);
        QCOMPARE(spokenSoFar(), QStringList());
    }

#if QT_VERSION < QT_VERSION_CHECK(6, 8, 0)
    // A screen reader may ask for a sentence after others have been announced.
    void theLastSentencesCanBeAskedFor()
    {
        TestWindow window;
        for (int number = 1; number <= 20; ++number)
            announce(&window, QString::number(number));
        QStringList sentences;
        for (QObject *object : window.findChildren<QObject *>(u"announcement"_s)) {
            QAccessibleInterface *notification = QAccessible::queryAccessibleInterface(object);
            sentences.append(notification->text(QAccessible::Name));
            QCOMPARE(notification->text(QAccessible::Description), QString());
            QCOMPARE(notification->role(), QAccessible::Notification);
            QCOMPARE(notification->parent(), QAccessible::queryAccessibleInterface(&window));
            QCOMPARE(notification->childCount(), 0);
            QCOMPARE(notification->indexOfChild(notification), -1);
        }
        QCOMPARE(sentences,
                 QStringList({u"13"_s, u"14"_s, u"15"_s, u"16"_s, u"17"_s, u"18"_s, u"19"_s, u"20"_s}));
    }
#endif
};

static const TestClass<TestAnnouncer> testAnnouncer("tst_announcer");

#include "tst_announcer.moc"
