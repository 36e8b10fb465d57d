#pragma once

#include <QtGui/qfont.h>
#include <QtGui/qguiapplication.h>
#include <QtQuick/qquickitem.h>
#include <QtQuick/qquickwindow.h>
#include <QtTest/qtest.h>

/// The colour of focus and of what is chosen.
inline constexpr QColor accent(10, 97, 219);

/// The type size of the system while the object lives, in logical pixels.
class SystemTypeSize
{
public:
    explicit SystemTypeSize(int size)
    {
        QFont font = m_before;
        font.setPixelSize(size);
        QGuiApplication::setFont(font);
    }
    ~SystemTypeSize() { QGuiApplication::setFont(m_before); }
    Q_DISABLE_COPY_MOVE(SystemTypeSize)

private:
    const QFont m_before = QGuiApplication::font();
};

/// A shown and active window of a test. Only usable when isReady() holds.
class TestWindow : public QQuickWindow
{
public:
    explicit TestWindow(QSize size = {400, 300}) { resize(size); }

    [[nodiscard]] bool isReady()
    {
        show();
        requestActivate();
        return QTest::qWaitForWindowExposed(this) && QTest::qWaitForWindowActive(this);
    }
};

/// Lays out and renders all there is to render before it returns.
inline QImage settled(QQuickWindow &window)
{
    return window.grabWindow();
}

/// An item of a colour at a place of its parent.
inline QQuickItem *addItem(QQuickItem *parent, const QRectF &place)
{
    auto *item = new QQuickItem(parent);
    item->setPosition(place.topLeft());
    item->setSize(place.size());
    return item;
}
