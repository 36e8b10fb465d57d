#include "controls/fieldtest.h"
#include "shownitems.h"
#include "support/testprogram.h"
#include "ui/accessibility/accessiblefactory.h"
#include "ui/platform/systemfonts.h"

#include <QtCore/qregularexpression.h>
#include <QtGui/qaccessible.h>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

// The context menu of a field, as it is opened and used.
class TestContextMenu : public FieldTest
{
    Q_OBJECT

    // The entries on the screen, first to last.
    [[nodiscard]] QList<QQuickItem *> entries() const
    {
        QList<QQuickItem *> all = menuEntriesOf(*window());
        std::ranges::sort(all, {}, [](const QQuickItem *item) { return item->mapToScene(QPointF()).y(); });
        return all;
    }

    [[nodiscard]] QStringList titles(bool onlyEnabled = false) const
    {
        QStringList titles;
        for (const QQuickItem *entry : entries()) {
            if (entry->isEnabled() || !onlyEnabled) {
                titles.append(textOf(entry));
            }
        }
        return titles;
    }

    [[nodiscard]] QQuickItem *entry(const QString &title) const
    {
        const QList<QQuickItem *> all = entries();
        const auto found = std::ranges::find(all, title, &textOf);
        return found == all.end() ? nullptr : *found;
    }

    [[nodiscard]] QQuickItem *menuBox() const
    {
        const QList<QQuickItem *> shown = shownBelow(window()->contentItem());
        const auto isMenu = [](const QQuickItem *item) { return item->property("shadowOffset") == 4; };
        const auto found = std::ranges::find_if(shown, isMenu);
        return found == shown.end() ? nullptr : *found;
    }

    [[nodiscard]] QRectF placeOfMenu() const
    {
        const QQuickItem *box = menuBox();
        return box ? box->mapRectToScene(box->boundingRect()) : QRectF();
    }

    [[nodiscard]] QString highlighted() const
    {
        for (const QQuickItem *entry : entries()) {
            if (entry->property("highlighted").toBool()) {
                return textOf(entry);
            }
        }
        return {};
    }

    void openByMouse(const QQuickItem *input) const
    {
        QTest::mouseClick(window(), Qt::RightButton, {}, middleOf(input));
        QTRY_VERIFY(!entries().isEmpty());
        settled(*window());
    }

    void openByKey(const QQuickItem *input) const
    {
        QVERIFY(input->hasActiveFocus());
        QTest::keyClick(window(), Qt::Key_Menu);
        QTRY_VERIFY(!entries().isEmpty());
        settled(*window());
    }

    void press(int key) const { QTest::keyClick(window(), Qt::Key(key)); }

private slots:
    void opensOnceForTheRightButtonAndEachKey_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        QTest::newRow("right button") << 0 << 0;
        QTest::newRow("Menu") << int(Qt::Key_Menu) << 0;
        QTest::newRow("Shift and F10") << int(Qt::Key_F10) << int(Qt::ShiftModifier);
    }

    void opensOnceForTheRightButtonAndEachKey()
    {
        QFETCH(const int, key);
        QFETCH(const int, modifiers);
        QQuickItem *text = input("plain");
        fill(text, u"hemlig"_s, 1, 3);
        QVERIFY(entries().isEmpty());
        if (key) {
            QTest::keyClick(window(), Qt::Key(key), Qt::KeyboardModifiers(modifiers));
        } else {
            QTest::mouseClick(window(), Qt::RightButton, {}, middleOf(text));
        }
        QTRY_COMPARE(titles(),
                     QStringList({u"Undo"_s, u"Redo"_s, u"Cut"_s, u"Copy"_s, u"Paste"_s, u"Delete"_s,
                                  u"Select all"_s}));
        QCOMPARE(highlighted(), key ? u"Undo"_s : QString());
        QCOMPARE(selectionOf(text), u"em"_s);
    }

    void otherKeysOpenNothing()
    {
        input("plain")->forceActiveFocus();
        press(Qt::Key_F10);
        QTest::keyClick(window(), Qt::Key_F10, Qt::ControlModifier);
        QTest::mouseClick(window(), Qt::LeftButton, {}, middleOf(input("plain")));
        QTest::mouseClick(window(), Qt::RightButton, {}, {390, 290});
        QVERIFY(entries().isEmpty());
    }

    void theRightButtonGivesTheFocus()
    {
        fill(input("masked"), u"hemlig"_s);
        openByMouse(input("plain"));
        press(Qt::Key_Escape);
        QTRY_VERIFY(input("plain")->hasActiveFocus());
    }

    void itOpensAtThePointerOrBelowTheTextCursor()
    {
        QQuickItem *plain = input("plain");
        fill(plain, u"hemlig"_s, 3, 3);
        openByMouse(plain);
        QCOMPARE(placeOfMenu().topLeft().toPoint(), middleOf(plain));
        press(Qt::Key_Escape);
        QTRY_VERIFY(plain->hasActiveFocus());
        const QRectF cursor = plain->mapRectToScene(plain->property("cursorRectangle").toRectF());
        QVERIFY(cursor.left() > field("plain")->mapToScene(QPointF()).x() + 10);
        openByKey(plain);
        QVERIFY((placeOfMenu().topLeft() - cursor.bottomLeft()).manhattanLength() <= 1);
    }

    void theMenuLooksAsItShould()
    {
        fill(input("plain"), u"hemlig"_s, 1, 3);
        openByKey(input("plain"));
        QVERIFY(menuBox());
        const QQuickItem &box = *menuBox();
        QCOMPARE(box.property("color").value<QColor>(), QColor(Qt::white));
        QCOMPARE(box.property("borderColor").value<QColor>(), QColor::fromRgbF(0.78F, 0.81F, 0.86F));
        QCOMPARE(box.property("shadowColor").value<QColor>(), QColor::fromRgbF(0, 0, 0, 0.18F));
        QCOMPARE(box.property("shadowBlur").toReal(), 12.0);
        QCOMPARE(box.property("radius").toReal(), 10.0);

        const QList<QQuickItem *> all = entries();
        QCOMPARE(all.first()->mapToItem(&box, QPointF()), QPointF(5, 5));
        const QSizeF last = all.last()->size();
        QCOMPARE(all.last()->mapToItem(&box, QPointF(last.width(), last.height())),
                 QPointF(box.width() - 5, box.height() - 5));
        for (const QQuickItem *one : all) {
            const auto *label = one->property("contentItem").value<QQuickItem *>();
            QCOMPARE(label->position(), QPointF(10, 6));
            QVERIFY(label->width() <= one->width() - 2 * 10);
            QCOMPARE(label->property("font").value<QFont>().pixelSize(), SystemFonts::size());
            const bool isFirst = one == all.first();
            const QColor expected = isFirst ? QColor(Qt::white)
                : one->isEnabled()          ? QColor::fromRgbF(0.12F, 0.14F, 0.18F)
                                            : QColor::fromRgbF(0.60F, 0.63F, 0.69F);
            QCOMPARE(label->property("color").value<QColor>().rgba(), expected.rgba());
            const auto *ground = one->property("background").value<QQuickItem *>();
            QCOMPARE(ground->property("color").value<QColor>().rgba(), isFirst ? accent.rgba() : 0U);
            QCOMPARE(ground->property("radius").toReal(), 6.0);
        }
    }

    void entriesAreEnabledAsTheyApply_data()
    {
        QTest::addColumn<QByteArray>("field");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("selected");
        QTest::addColumn<bool>("isUndone");
        QTest::addColumn<QString>("clipboard");
        QTest::addColumn<QStringList>("enabled");
        QTest::newRow("nothing") << "plain"_ba << QString() << 0 << false << QString() << QStringList();
        QTest::newRow("a clipboard") << "plain"_ba << QString() << 0 << false << u"a"_s
                                     << QStringList{u"Paste"_s};
        QTest::newRow("a text") << "plain"_ba << u"a"_s << 0 << false << QString()
                                << QStringList{u"Undo"_s, u"Select all"_s};
        QTest::newRow("a selection") << "plain"_ba << u"abc"_s << 2 << false << u"a"_s
                                     << QStringList{u"Undo"_s,  u"Cut"_s,    u"Copy"_s,
                                                    u"Paste"_s, u"Delete"_s, u"Select all"_s};
        QTest::newRow("an undone text")
            << "plain"_ba << u"abc"_s << 0 << true << QString() << QStringList{u"Redo"_s};
        QTest::newRow("masked, nothing")
            << "masked"_ba << QString() << 0 << false << QString() << QStringList();
        QTest::newRow("masked, a clipboard")
            << "masked"_ba << QString() << 0 << false << u"a"_s << QStringList{u"Paste"_s};
        QTest::newRow("masked, a text")
            << "masked"_ba << u"a"_s << 0 << false << QString() << QStringList{u"Select all"_s};
    }

    void entriesAreEnabledAsTheyApply()
    {
        QFETCH(const QByteArray, field);
        QFETCH(const QString, text);
        QFETCH(const int, selected);
        QFETCH(const bool, isUndone);
        QFETCH(const QString, clipboard);
        QFETCH(const QStringList, enabled);
        if (!clipboard.isEmpty()) {
            setClipboard(clipboard);
        }
        QQuickItem *used = input(field.constData());
        fill(used, text, 0, selected);
        if (isUndone) {
            QTest::keySequence(window(), QKeySequence::Undo);
        }
        openByMouse(used);
        QCOMPARE(titles(true), enabled);
    }

    void eachEntryDoesWhatItSays_data()
    {
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("selection");
        QTest::addColumn<QString>("clipboard");
        QTest::newRow("Undo") << u"Undo"_s << QString() << QString() << u"XY"_s;
        QTest::newRow("Cut") << u"Cut"_s << u"aef"_s << QString() << u"bcd"_s;
        QTest::newRow("Copy") << u"Copy"_s << u"abcdef"_s << u"bcd"_s << u"bcd"_s;
        QTest::newRow("Paste") << u"Paste"_s << u"aXYef"_s << QString() << u"XY"_s;
        QTest::newRow("Delete") << u"Delete"_s << u"aef"_s << QString() << u"XY"_s;
        QTest::newRow("Select all") << u"Select all"_s << u"abcdef"_s << u"abcdef"_s << u"XY"_s;
    }

    void eachEntryDoesWhatItSays()
    {
        QFETCH(const QString, title);
        QFETCH(const QString, text);
        QFETCH(const QString, selection);
        QFETCH(const QString, clipboard);
        QQuickItem *plain = input("plain");
        setClipboard(u"XY"_s);
        fill(plain, u"abcdef"_s, 1, 4);
        openByMouse(plain);
        QTest::mouseClick(window(), Qt::LeftButton, {}, middleOf(entry(title)));
        QTRY_VERIFY(entries().isEmpty());
        QCOMPARE(textOf(plain), text);
        QCOMPARE(storedOf("plain"), text);
        QCOMPARE(selectionOf(plain), selection);
        QCOMPARE(this->clipboard(), clipboard);
        QVERIFY(plain->hasActiveFocus());
    }

    void redoBringsBackWhatUndoTook()
    {
        QQuickItem *plain = input("plain");
        fill(plain, u"abc"_s);
        QTest::keySequence(window(), QKeySequence::Undo);
        QCOMPARE(textOf(plain), QString());
        openByMouse(plain);
        QTest::mouseClick(window(), Qt::LeftButton, {}, middleOf(entry(u"Redo"_s)));
        QTRY_COMPARE(textOf(plain), u"abc"_s);
    }

    void aMaskedFieldOffersNothingThatTakesItsTextOut()
    {
        setClipboard(u"XY"_s);
        QQuickItem *masked = input("masked");
        fill(masked, u"abcdef"_s, 1, 4);
        openByMouse(masked);
        QCOMPARE(titles(), QStringList({u"Paste"_s, u"Select all"_s}));
        QTest::keySequence(window(), QKeySequence::Copy);
        QTest::keySequence(window(), QKeySequence::Cut);
        QCOMPARE(clipboard(), u"XY"_s);
        QTest::mouseClick(window(), Qt::LeftButton, {}, middleOf(entry(u"Paste"_s)));
        QTRY_COMPARE(textOf(masked), u"aXYef"_s);
        QCOMPARE(storedOf("masked"), u"aXYef"_s);
    }

    void allOfAMaskedFieldIsSelected()
    {
        QQuickItem *masked = input("masked");
        fill(masked, u"abcdef"_s, 1, 4);
        openByMouse(masked);
        QTest::mouseClick(window(), Qt::LeftButton, {}, middleOf(entry(u"Select all"_s)));
        QTRY_VERIFY(entries().isEmpty());
        QCOMPARE(masked->property("selectionStart").toInt(), 0);
        QCOMPARE(masked->property("selectionEnd").toInt(), 6);
    }

    void aMenuThatIsNotThereLeavesTheFieldAsItWas()
    {
        QQuickItem *plain = input("plain");
        plain->setProperty("menu", QUrl(u"qrc:/nowhere.qml"_s));
        for (int time = 0; time < 2; ++time) {
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"nowhere"_s));
            QTest::mouseClick(window(), Qt::RightButton, {}, middleOf(plain));
        }
        plain->setFocus(false);
        QVERIFY(!plain->property("inUse").toBool());
    }

    void keysMoveChooseAndLeave()
    {
        QQuickItem *plain = input("plain");
        fill(plain, u"abcdef"_s, 1, 4);
        openByKey(plain);
        QCOMPARE(highlighted(), u"Undo"_s);
        press(Qt::Key_Down);
        // What cannot be done is passed over.
        QCOMPARE(highlighted(), u"Cut"_s);
        press(Qt::Key_Down);
        press(Qt::Key_Down);
        QCOMPARE(highlighted(), u"Delete"_s);
        press(Qt::Key_Up);
        QCOMPARE(highlighted(), u"Copy"_s);
        press(Qt::Key_S);
        QCOMPARE(highlighted(), u"Select all"_s);
        press(Qt::Key_C);
        QStringList alike = {highlighted()};
        press(Qt::Key_C);
        alike.append(highlighted());
        alike.sort();
        QCOMPARE(alike, QStringList({u"Copy"_s, u"Cut"_s}));
        if (highlighted() == u"Cut"_s) {
            press(Qt::Key_Down);
        }
        // No such entry, and one that cannot be done.
        press(Qt::Key_X);
        press(Qt::Key_R);
        QCOMPARE(highlighted(), u"Copy"_s);
        press(Qt::Key_Return);
        QTRY_VERIFY(entries().isEmpty());
        QCOMPARE(clipboard(), u"bcd"_s);

        openByKey(plain);
        press(Qt::Key_Escape);
        QTRY_VERIFY(entries().isEmpty());
        QCOMPARE(textOf(plain), u"abcdef"_s);
        QCOMPARE(selectionOf(plain), u"bcd"_s);
        QVERIFY(plain->hasActiveFocus());
    }

    void anOpenMenuKeepsTheKeyboard()
    {
        QQuickItem *plain = input("plain");
        fill(plain, u"abc"_s);
        openByKey(plain);
        for (const int key : {Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Tab, Qt::Key_X, Qt::Key_Backspace}) {
            press(key);
        }
        QVERIFY(!entries().isEmpty());
        QVERIFY(!input("masked")->hasActiveFocus());
        QCOMPARE(textOf(plain), u"abc"_s);
    }

    void aClickElsewhereOnlyCloses()
    {
        QQuickItem *plain = input("plain");
        fill(plain, u"abcdef"_s, 1, 4);
        openByKey(plain);
        const QPoint outside(window()->width() - 5, window()->height() - 5);
        QTest::mouseClick(window(), Qt::LeftButton, {}, outside);
        QTRY_VERIFY(entries().isEmpty());
        QCOMPARE(selectionOf(plain), u"bcd"_s);

        openByMouse(input("masked"));
        QTest::mouseClick(window(), Qt::LeftButton, {}, field("plain")->position().toPoint() + QPoint(3, 3));
        QTRY_VERIFY(entries().isEmpty());
        QVERIFY(input("masked")->hasActiveFocus());
    }

    void itIsThereOnlyWhileItIsOpen()
    {
        const auto objects = [this] { return window()->findChildren<QObject *>().size(); };
        fill(input("plain"), u"abc"_s);
        openByKey(input("plain"));
        press(Qt::Key_Escape);
        QTRY_VERIFY(entries().isEmpty());
        const auto before = objects();
        openByKey(input("plain"));
        QVERIFY(objects() > before + 7);
        press(Qt::Key_Escape);
        QTRY_COMPARE(objects(), before);
    }

    void aFieldThatGoesTakesItsMenuAlong()
    {
        fill(input("plain"), u"abc"_s);
        openByKey(input("plain"));
        delete field("plain");
        QTRY_VERIFY(entries().isEmpty());
    }

    void anotherWindowClosesIt()
    {
        fill(input("plain"), u"abc"_s);
        openByKey(input("plain"));
        TestWindow other;
        QVERIFY(other.isReady());
        QTRY_VERIFY(entries().isEmpty());
    }

    void itKeepsClearOfTheWindowsEdges()
    {
        constexpr int margin = 8;
        openByMouse(input("plain"));
        const QSize size = placeOfMenu().size().toSize();
        press(Qt::Key_Escape);
        QTRY_VERIFY(entries().isEmpty());
        window()->resize(size + QSize(3 * margin, 3 * margin));
        openByMouse(input("plain"));
        const QPointF corner(window()->width() - margin, window()->height() - margin);
        QCOMPARE(placeOfMenu().bottomRight(), corner);
    }

    void itsEntriesArePadded()
    {
        openByMouse(input("plain"));
        qreal below = 5;
        for (const QQuickItem *item : entries()) {
            const auto *text = item->property("contentItem").value<QQuickItem *>();
            QCOMPARE(text->position(), QPointF(10, 6));
            QCOMPARE(text->width(), item->width() - 2 * 10);
            QCOMPARE(item->height(), std::ceil(text->implicitHeight()) + 2 * 6);
            QQuickItem *menu = item->parentItem()->parentItem()->parentItem();
            QCOMPARE(item->mapToItem(menu, QPointF()), QPointF(5, below));
            QCOMPARE(item->width(), menu->width() - 2 * 5);
            below += item->height();
        }
    }

    void theHighlightIsOfTheAccent()
    {
        fill(input("plain"), u"abcdef"_s, 1, 4);
        openByMouse(input("plain"));
        QQuickItem *copy = entry(u"Copy"_s);
        const QPoint right(copy->mapToScene({copy->width() - 12, copy->height() / 2}).toPoint());
        QCOMPARE(pixel(right), QColor(Qt::white));
        QTest::mouseMove(window(), middleOf(copy));
        QTRY_COMPARE(pixel(right), accent);
        QTest::mouseMove(window(), middleOf(entry(u"Delete"_s)));
        QTRY_COMPARE(pixel(right), QColor(Qt::white));
    }

    void itsEntriesAreMenuItemsToAssistiveTechnologies()
    {
        installAccessibleFactory();
        fill(input("plain"), u"abcdef"_s);
        openByKey(input("plain"));
        for (QQuickItem *item : entries()) {
            QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(item);
            QVERIFY(interface);
            QCOMPARE(interface->role(), QAccessible::MenuItem);
            QCOMPARE(interface->parent()->role(), QAccessible::PopupMenu);
            QCOMPARE(interface->text(QAccessible::Name), textOf(item));
            QCOMPARE(bool(interface->state().disabled), !item->isEnabled());
            QCOMPARE(bool(interface->state().focused), item->hasActiveFocus());
        }
        QAccessibleActionInterface *actions =
            QAccessible::queryAccessibleInterface(entry(u"Select all"_s))->actionInterface();
        QVERIFY(actions->actionNames().contains(QAccessibleActionInterface::pressAction()));
        actions->doAction(QAccessibleActionInterface::setFocusAction());
        QVERIFY(!entry(u"Copy"_s)->isEnabled());
        QAccessible::queryAccessibleInterface(entry(u"Copy"_s))
            ->actionInterface()
            ->doAction(QAccessibleActionInterface::pressAction());
        QCoreApplication::processEvents();
        QVERIFY(!entries().isEmpty());
        actions->doAction(QAccessibleActionInterface::pressAction());
        QTRY_VERIFY(entries().isEmpty());
        QCOMPARE(selectionOf(input("plain")), u"abcdef"_s);
    }
};

static const TestClass<TestContextMenu> testContextMenu("tst_contextmenu");

#include "tst_contextmenu.moc"
