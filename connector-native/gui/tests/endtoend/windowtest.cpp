#include "windowtest.h"

#include <QTest>

using namespace Qt::StringLiterals;

void WindowTest::renew()
{
    m_window.reset();
    m_application.reset();
    m_application = std::make_unique<Application>();
    QVERIFY(m_application->installSimulator());
}

void WindowTest::start()
{
    QVERIFY(m_application->launch());
    awaitStart();
}

void WindowTest::awaitStart()
{
    const bool isStarted = m_application->waitForWindow();
    m_window = std::make_unique<MainWindow>(*m_application);
    QVERIFY(isStarted);
    QTRY_VERIFY(window().shows(u"%1 command log entries available"_s.arg(startupCalls)));
}

void WindowTest::select(const QString &exchange) const
{
    QVERIFY(window().click(window().tab(exchange)));
    QTRY_VERIFY(window().tab(exchange).is(AccessibleNode::State::Selected));
}

void WindowTest::typeInto(const QString &caption, const QString &text) const
{
    QVERIFY(window().fill(window().fieldBelow(caption), text));
    QTRY_COMPARE(window().fieldBelow(caption).characterCount(), text.size());
}

void WindowTest::openLog() const
{
    QVERIFY(window().clickButton(u"Open technical log"_s));
    QTRY_VERIFY(!window().newestLogEntry().title.isEmpty());
}

void WindowTest::chooseFromMenu(const AccessibleNode &text, const QString &title) const
{
    desktop::rightClickAt(window().bringIntoView(text).center());
    QTRY_VERIFY(!window().menuEntry(title).isNull());
    QTRY_VERIFY(window().menuEntry(title).is(AccessibleNode::State::Enabled));
    desktop::clickAt(window().menuEntry(title).extents().center());
    QTRY_VERIFY(window().menu().isEmpty());
}

void WindowTest::initTestCase()
{
    QVERIFY(enableAccessibility());
}

void WindowTest::init()
{
    renew();
    start();
}

void WindowTest::cleanup()
{
    QCOMPARE(application().printed(), QByteArray());
    QVERIFY(application().isRunning() || application().waitForEnd() == 0);
    m_window.reset();
    m_application.reset();
}

void ActiveWindowTest::init()
{
    WindowTest::init();
    QTRY_VERIFY(window().isActive());
}

#include "moc_windowtest.cpp"
