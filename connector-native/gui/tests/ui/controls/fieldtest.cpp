#include "controls/fieldtest.h"

#include "shownitems.h"
#include "typing.h"

#include <QtQml/qqmlcomponent.h>

namespace {

constexpr auto twoFields = R"(
import QtQuick
import BrindlecoveConnectorGUI
Column {
    property InputField plain: InputField {
        property string stored
        fieldText: stored
        placeholder: "API key"
        width: 200
        onEdited: text => stored = text
    }
    property SecretField masked: SecretField {
        property string stored
        fieldText: stored
        placeholder: "API secret"
        width: 200
        onEdited: text => stored = text
    }
    padding: 20
    spacing: 20
    children: [plain, masked]
}
)";

} // namespace

QColor FieldTest::pixel(QPoint point) const
{
    const QImage image = settled(*m_window);
    return image.pixelColor(point * m_window->effectiveDevicePixelRatio());
}

void FieldTest::fill(QQuickItem *input, const QString &text, int selectionStart, int selectionEnd) const
{
    input->forceActiveFocus(Qt::TabFocusReason);
    typeText(m_window.get(), text);
    QCOMPARE(textOf(input), text);
    QVERIFY(QMetaObject::invokeMethod(input, "select", Q_ARG(int, selectionStart), Q_ARG(int, selectionEnd)));
}

void FieldTest::init()
{
    QQmlComponent component(&m_engine);
    component.setData(twoFields, QUrl());
    m_root = qobject_cast<QQuickItem *>(component.create());
    QVERIFY2(m_root, qPrintable(component.errorString()));
    m_window = std::make_unique<TestWindow>();
    m_root->setParent(m_window.get());
    m_root->setParentItem(m_window->contentItem());
    QVERIFY(m_window->isReady());
    QGuiApplication::clipboard()->clear();
}

#include "moc_fieldtest.cpp"
