#pragma once

#include <QFont>
#include <QObject>
#include <QtQml/qqmlregistration.h>

/// The fonts the user's desktop has chosen, as they are when the program starts, and the type sizes, which
/// follow the system's font, so that a larger one enlarges all of them. Sizes are in logical pixels. Main
/// thread only.
class SystemFonts : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(int size READ size CONSTANT)
    Q_PROPERTY(int captionSize READ captionSize CONSTANT)
    Q_PROPERTY(int thirdTitleSize READ thirdTitleSize CONSTANT)
    Q_PROPERTY(int largeTitleSize READ largeTitleSize CONSTANT)
    Q_PROPERTY(QString fixedFamily READ fixedFamily CONSTANT)

public:
    using QObject::QObject;

    [[nodiscard]] static int size();
    [[nodiscard]] static int captionSize();
    [[nodiscard]] static int thirdTitleSize();
    [[nodiscard]] static int largeTitleSize();
    [[nodiscard]] static QString fixedFamily();

    /// The fonts of all texts in the window's first frame, so that they can be opened before the texts exist.
    [[nodiscard]] static QList<QFont> ofFirstFrame();
};
