#include "support/testprogram.h"
#include "ui/accessibility/assistivetechnology.h"

#include <QtTest/qsignalspy.h>

#include <optional>

// Who is told that an assistive technology comes or goes.
class TestAssistiveTechnology : public QObject
{
    Q_OBJECT

private slots:
    void whoeverIsThereIsTold()
    {
        std::optional<AssistiveTechnology> gone(std::in_place);
        const AssistiveTechnology there;
        const QSignalSpy told(&there, &AssistiveTechnology::activeChanged);
        gone.reset();
        QAccessible::setActive(true);
        QCOMPARE(told.count(), 1);
        QAccessible::setActive(false);
        QCOMPARE(told.count(), 2);
    }
};

static const TestClass<TestAssistiveTechnology> testAssistiveTechnology("tst_assistivetechnology");

#include "tst_assistivetechnology.moc"
