#include "accessibilityevents.h"
#include "desktop.h"
#include "keylistener.h"
#include "support/testprogram.h"
#include "windowtest.h"

#include <QRandomGenerator>

#include <algorithm>
#include <array>
#include <chrono>
#include <functional>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

// Of a plain field and of a masked one, so that a letter of a secret that was told is recognised.
const auto openLetters = u"abcdE12"_s;
const auto secretLetters = u"qwzxV89"_s;

/// A text and a cursor that are edited by keys.
struct Field
{
    QString text;
    qsizetype cursor = 0;
    qsizetype anchor = 0; ///< The other end of what is selected.

    [[nodiscard]] qsizetype start() const { return std::min(cursor, anchor); }
    [[nodiscard]] qsizetype end() const { return std::max(cursor, anchor); }

    void replaceSelection(const QString &letters = {})
    {
        text.replace(start(), end() - start(), letters);
        cursor = anchor = start() + letters.size();
    }

    void move(const QString &key, bool selects)
    {
        const bool leavesSelection = !selects && cursor != anchor;
        const QMap<QString, qsizetype> targets = {
            {u"Home"_s, 0},
            {u"End"_s, text.size()},
            {u"Left"_s, leavesSelection ? start() : std::max<qsizetype>(0, cursor - 1)},
            {u"Right"_s, leavesSelection ? end() : std::min(text.size(), cursor + 1)}};
        cursor = targets.value(key);
        anchor = selects ? anchor : cursor;
    }

    void erase(qsizetype neighbour)
    {
        if (cursor == anchor)
            anchor = std::clamp<qsizetype>(neighbour, 0, text.size());
        replaceSelection();
    }

    void press(const QString &key)
    {
        if (key == u"BackSpace"_s) {
            erase(cursor - 1);
        } else if (key == u"Delete"_s) {
            erase(cursor + 1);
        } else if (key.size() == 1) {
            replaceSelection(key);
        } else {
            move(key.section(u'+', -1), key.startsWith(u"shift+"_s));
        }
    }
};

/// The fields, the first of which has the focus, and what random keys make of them when no key is lost and
/// none overtakes another.
class TypedForm
{
public:
    explicit TypedForm(quint32 seed)
        : m_random(seed)
    {
    }

    [[nodiscard]] QStringList keys() const { return m_keys; }
    [[nodiscard]] QString text(std::size_t field) const { return m_fields.at(field).text; }

    void edit(int count)
    {
        static const QStringList commands = {u"Left"_s,       u"Right"_s,       u"Home"_s,
                                             u"End"_s,        u"BackSpace"_s,   u"Delete"_s,
                                             u"shift+Left"_s, u"shift+Right"_s, u"shift+Home"_s};
        for (; count > 0; --count) {
            const QString &letters = m_focused < firstSecret ? openLetters : secretLetters;
            const bool isLetter = m_random.bounded(3) < 2;
            const QString key = isLetter ? letters.at(m_random.bounded(letters.size()))
                                         : commands.at(m_random.bounded(commands.size()));
            m_fields.at(m_focused).press(key);
            m_keys.append(key);
        }
    }

    void goToNext()
    {
        // From the token to the exchange's keys there are buttons and tabs.
        move(1, m_focused == 0 ? 11 : 1, u"Tab"_s);
    }
    void goBack() { move(-1, 1, u"shift+Tab"_s); }

private:
    static constexpr std::size_t firstSecret = 2;

    void move(int fields, int presses, const QString &key)
    {
        m_fields.at(m_focused).anchor = m_fields.at(m_focused).cursor;
        m_focused += fields;
        m_keys += QStringList(presses, key);
    }

    QRandomGenerator m_random;
    std::array<Field, 4> m_fields;
    std::size_t m_focused = 0;
    QStringList m_keys;
};

} // namespace

/// What is typed while a listener on the accessibility bus is asked about each key.
class TestKeyOrder : public WindowTest
{
    Q_OBJECT

    /// The arguments with which the connector is asked to validate what the fields hold.
    [[nodiscard]] QStringList validated()
    {
        const qsizetype before = application().calls().size();
        if (!window().clickButton(u"Validate and save keys"_s)
            || !QTest::qWaitFor([&] { return application().calls().size() > before; }, 20000))
            return {};
        return application().calls().at(before).sliced(2);
    }

    void verifyNothingSecretIsIn(const QStringList &told) const
    {
        for (const QString &key : told)
            QVERIFY2(key.size() != 1 || !secretLetters.contains(key, Qt::CaseInsensitive), qPrintable(key));
    }

    [[nodiscard]] AccessibleNode field(const QString &caption) const { return window().fieldBelow(caption); }

private slots:
    void init() override
    {
        renew();
        // Qt complains of each key that is not answered.
        application().setEnvironment(u"QT_LOGGING_RULES"_s, u"default.warning=false"_s);
        start();
        select(u"OKX"_s);
    }

    void keysKeepTheirOrderAndSecretsAreToldNobody_data()
    {
        QTest::addColumn<std::chrono::milliseconds>("answer");
        QTest::addColumn<int>("pace");
        QTest::addColumn<int>("length");
        const auto row = [](std::chrono::milliseconds answer, int pace, int length) {
            const QByteArray time =
                answer == KeyListener::never ? "never" : QByteArray::number(int(answer.count())) + " ms";
            QTest::addRow("answered in %s, a key in %d ms", time.constData(), pace)
                << answer << pace << length;
        };
        for (const auto answer : {0ms, 20ms, 80ms, KeyListener::never})
            row(answer, 5, 12);
        row(20ms, 25, 8);
        row(80ms, 60, 5);
        row(KeyListener::never, 150, 1);
    }

    // The keys are random, but the same in every run.
    void keysKeepTheirOrderAndSecretsAreToldNobody()
    {
        QFETCH(const std::chrono::milliseconds, answer);
        QFETCH(const int, pace);
        QFETCH(const int, length);
        TypedForm form(static_cast<quint32>(pace) + static_cast<quint32>(answer.count()));
        for (const auto &move : {&TypedForm::goToNext, &TypedForm::goToNext, &TypedForm::goToNext,
                                 &TypedForm::goBack, &TypedForm::goBack, &TypedForm::goToNext}) {
            form.edit(length);
            std::invoke(move, form);
        }
        form.edit(length);

        const AccessibilityEvents events;
        QVERIFY(window().click(window().tokenField()));
        KeyListener listener(answer);
        desktop::press(form.keys(), pace);
        QTRY_COMPARE(window().tokenField().text(), form.text(0));
        QTRY_COMPARE(field(u"API key"_s).text(), form.text(1));
        QTRY_COMPARE(field(u"API secret"_s).characterCount(), form.text(2).size());
        QTRY_COMPARE(field(u"Passphrase"_s).characterCount(), form.text(3).size());
        QCOMPARE(validated(), QStringList({form.text(1), form.text(2), form.text(3)}));
        const QStringList told = listener.stop();
        QVERIFY(told.contains(u"Tab"_s));
        verifyNothingSecretIsIn(told);
    }

    void aKeyThatTheListenerKeepsHoldsNoOther_data()
    {
        QTest::addColumn<QString>("caption");
        QTest::newRow("in a plain field") << u"API key"_s;
        QTest::newRow("in a masked field") << u"API secret"_s;
    }

    void aKeyThatTheListenerKeepsHoldsNoOther()
    {
        QFETCH(const QString, caption);
        typeInto(u"Passphrase"_s, u"z"_s);
        const AccessibilityEvents events;
        QVERIFY(window().click(field(caption)));
        KeyListener listener(20ms, u"Home"_s);
        desktop::press({u"q"_s, u"Home"_s, u"w"_s, u"Home"_s, u"x"_s, u"Home"_s}, 5);
        QTRY_COMPARE_WITH_TIMEOUT(field(caption).characterCount(), 3, 2000);
        QCOMPARE(listener.stop().count(u"Home"_s), 6);
        QVERIFY(validated().contains(u"qwx"_s));
    }
};

static const TestClass<TestKeyOrder> testKeyOrder("tst_keyorder");

#include "tst_keyorder.moc"
