#include "support/testprogram.h"
#include "ui/painting/box.h"
#include "windowtesting.h"

#include <QtQml/qqmlcomponent.h>
#include <QtQml/qqmlengine.h>

#include <cmath>
#include <memory>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

// Every kind of box that is outlined, high enough for its corners.
constexpr auto controls = R"(
import QtQuick
import BrindlecoveConnectorGUI

Item {
    property InputField field: InputField {
        fieldText: ""
        placeholder: ""
        width: 200
        x: 20
        y: 20
    }
    property PlainButton button: PlainButton {
        height: 60
        title: "Button"
        x: 20
        y: 80
    }
    property PlainButton tab: PlainButton {
        face.radius: Style.tabRadius
        height: 60
        title: "Tab"
        x: 220
        y: 80
    }
    property OutputPanel panel: OutputPanel {
        body: "output"
        title: "Panel"
        width: 300
        x: 20
        y: 160
    }

    children: [field, button, tab, panel]
}
)";

} // namespace

// The outline of the control that has the keyboard's focus, at whatever whole ratio the test is run with.
class TestFocusRing : public QObject
{
    Q_OBJECT

    QQmlEngine m_engine;

    static QQuickItem *find(QQuickItem *root, const char *type)
    {
        if (root->inherits(type)) {
            return root;
        }
        const QList<QQuickItem *> children = root->childItems();
        for (QQuickItem *child : children) {
            if (QQuickItem *found = find(child, type)) {
                return found;
            }
        }
        return nullptr;
    }

    // How far from a corner, along each axis, the diagonal into it meets something of the accent's colour.
    [[nodiscard]] static std::optional<qreal> firstAccent(const QImage &image, QPointF corner, qreal ratio)
    {
        constexpr qreal outside = 6;
        const QPoint first = ((corner - QPointF(outside, outside)) * ratio).toPoint();
        const QPointF start = QPointF(first) / ratio - corner;
        qreal before = 0;
        for (int step = 0; step < 2 * outside * ratio; ++step) {
            const int red = image.pixelColor(first + QPoint(step, step)).red();
            const qreal share = (255 - red) / qreal(255 - accent.red());
            if (share >= 0.5) {
                // Between the middles of two pixels.
                const qreal middle = step - 0.5 + (0.5 - before) / (share - before);
                return (start.x() + start.y()) / 2 + middle / ratio;
            }
            before = share;
        }
        return std::nullopt;
    }

private slots:
    void initTestCase() { m_engine.addImportPath(u":/"_s); }

    void itsCornersFollowTheBox_data()
    {
        QTest::addColumn<QByteArray>("control");
        QTest::addColumn<QByteArray>("focused");
        QTest::addColumn<qreal>("radius");
        QTest::newRow("field") << QByteArray("field") << QByteArray("QQuickTextInput") << 6.0;
        QTest::newRow("button") << QByteArray("button") << QByteArray("PressArea") << 10.0;
        QTest::newRow("tab") << QByteArray("tab") << QByteArray("PressArea") << 12.0;
        QTest::newRow("panel") << QByteArray("panel") << QByteArray("OutputView") << 14.0;
    }

    void itsCornersFollowTheBox()
    {
        QFETCH(const QByteArray, control);
        QFETCH(const QByteArray, focused);
        QFETCH(const qreal, radius);
        QQmlComponent component(&m_engine);
        component.setData(controls, QUrl());
        TestWindow window;
        auto *root = qobject_cast<QQuickItem *>(component.create());
        QVERIFY2(root, qPrintable(component.errorString()));
        root->setParent(&window);
        root->setParentItem(window.contentItem());
        QVERIFY(window.isReady());
        auto *item = root->property(control.constData()).value<QQuickItem *>();
        const QQuickItem *box = find(item, "Box");
        QVERIFY(box);
        QCOMPARE(box->property("radius").toReal(), radius);
        const QPointF corner = box->mapToScene(QPointF());
        const qreal ratio = window.effectiveDevicePixelRatio();
        QVERIFY(!firstAccent(settled(window), corner, ratio));

        find(item, focused.constData())->forceActiveFocus(Qt::TabFocusReason);
        const std::optional<qreal> place = firstAccent(settled(window), corner, ratio);
        QVERIFY(place);
        // Where a continuous corner meets its diagonal, in radii; the ring is three wide, its gap included.
        constexpr qreal diagonal = 0.2915;
        const qreal expected = diagonal * radius - 3 / std::sqrt(2.0);
        QVERIFY2(std::abs(*place - expected) <= 0.6 / ratio,
                 qPrintable(u"%1 instead of %2"_s.arg(*place).arg(expected)));
    }
};

static const TestClass<TestFocusRing> testFocusRing("tst_focusring");

#include "tst_focusring.moc"
