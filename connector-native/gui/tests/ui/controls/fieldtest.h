#pragma once

#include "windowtesting.h"

#include <QtGui/qclipboard.h>
#include <QtGui/qguiapplication.h>
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
    [[nodiscard]] QColor pixel(QPoint point) const;

    static void setClipboard(const QString &text) { QGuiApplication::clipboard()->setText(text); }
    [[nodiscard]] static QString clipboard() { return QGuiApplication::clipboard()->text(); }

    /// What the field has reported and would hand to the connector.
    [[nodiscard]] QString storedOf(const char *type) const
    {
        return field(type)->property("stored").toString();
    }

    /// Gives the input a text as its user would type it, and selects a part.
    void fill(QQuickItem *input, const QString &text, int selectionStart = 0, int selectionEnd = 0) const;

private:
    QQmlEngine m_engine;
    std::unique_ptr<TestWindow> m_window;
    QQuickItem *m_root = nullptr;

protected slots:
    void initTestCase() { m_engine.addImportPath(QStringLiteral(":/")); }

private slots:
    void init();
    void cleanup() { m_window.reset(); }
};
