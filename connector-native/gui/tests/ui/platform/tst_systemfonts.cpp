#include "support/testprogram.h"
#include "ui/platform/systemfonts.h"
#include "windowtesting.h"

// How large the texts are that are not of the system's size.
class TestSystemFonts : public QObject
{
    Q_OBJECT

private slots:
    void allSizesFollowTheSystems_data()
    {
        QTest::addColumn<int>("system");
        QTest::addColumn<QList<int>>("sizes");
        QTest::newRow("usual") << 13 << QList<int>{13, 12, 17, 27};
        QTest::newRow("larger") << 20 << QList<int>{20, 18, 26, 42};
    }

    void allSizesFollowTheSystems()
    {
        QFETCH(const int, system);
        const SystemTypeSize type(system);
        const QList<int> sizes{SystemFonts::size(), SystemFonts::captionSize(), SystemFonts::thirdTitleSize(),
                               SystemFonts::largeTitleSize()};
        QTEST(sizes, "sizes");
    }
};

static const TestClass<TestSystemFonts> testSystemFonts("tst_systemfonts");

#include "tst_systemfonts.moc"
