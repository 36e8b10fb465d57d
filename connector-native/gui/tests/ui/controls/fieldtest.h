#pragma once

#include "shownitems.h"
#include "typing.h"
#include "windowtesting.h"

#include <QtGui/qclipboard.h>
#include <QtGui/qguiapplication.h>
#include <QtQml/qqmlcomponent.h>
#include <QtQml/qqmlengine.h>

#include <memory>

/// What tests of fields start from: a window with a plain field above a masked one, both empty. A field is
/// used by way of its text input. Main thread only.
class FieldTest : public QObject
{
    Q_OBJECT

protected:
    [[nodiscard]] QQuickWindow *window() const { return m_window.get(); }
    /// Whatever a case is about: a field, then its text input.
    [[nodiscard]] QQuickItem *field(const char *type) const
    {
        return m_root->property(type).value<QQuickItem *>();
    }
    [[nodiscard]] QQuickItem *input(const char *type) const
    {
        return field(type)->property("input").value<QQuickItem *>();
    }
    [[nodiscard]] static QString textOf(const QQuickItem *input)
    {
        return input->property("text").toString();
    }
    [[nodiscard]] static QString selectionOf(const QQuickItem *input)
    {
        return input->property("selectedText").toString();
    }
    [[nodiscard]] QColor pixel(QPoint point) const
    {
        const QImage image = settled(*m_window);
        return image.pixelColor(point * m_window->effectiveDevicePixelRatio());
    }

    static void setClipboard(const QString &text) { QGuiApplication::clipboard()->setText(text); }
    [[nodiscard]] static QString clipboard() { return QGuiApplication::clipboard()->text(); }

    /// What the field has reported and would hand to the connector.
    [[nodiscard]] QString storedOf(const char *type) const
    {
        return field(type)->property("stored").toString();
    }

    /// Gives the input a text as its user would type it, and selects a part.
    void fill(QQuickItem *input, const QString &text, int selectionStart = 0, int selectionEnd = 0) const
    {
        input->forceActiveFocus(Qt::TabFocusReason);
        typeText(m_window.get(), text);
        QCOMPARE(textOf(input), text);
        QVERIFY(
            QMetaObject::invokeMethod(input, "select", Q_ARG(int, selectionStart), Q_ARG(int, selectionEnd)));
    }

private:
    QQmlEngine m_engine;
    std::unique_ptr<TestWindow> m_window;
    QQuickItem *m_root = nullptr;

protected slots:
    void initTestCase() { m_engine.addImportPath(QStringLiteral(":/")); }

private slots:
    void init()
    {
        QQmlComponent component(&m_engine);
        component.setData(R"(
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
            })",
                          QUrl());
        m_root = qobject_cast<QQuickItem *>(component.create());
        QVERIFY2(m_root, qPrintable(component.errorString()));
        m_window = std::make_unique<TestWindow>();
        m_root->setParent(m_window.get());
        m_root->setParentItem(m_window->contentItem());
        QVERIFY(m_window->isReady());
        QGuiApplication::clipboard()->clear();
    }

    void cleanup() { m_window.reset(); }
};
