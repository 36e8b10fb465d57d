#pragma once

#include <QObject>

class QKeyEvent;

/// Takes the keys that make up a masked text past what Qt tells assistive technologies: they are asked about
/// each key before the window sees it, with the character that it types. Editing and moving keys are told,
/// and so is every key while the modifier of a screen reader's commands is held. Main thread only.
class SecretKeys : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// To be called when the masked input gets the focus, and again before each key: the last filter of the
    /// application to be installed is the first to be asked, and Qt may install its own at any time.
    void cover();
    void uncover();

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    [[nodiscard]] bool isCovered(const QKeyEvent &event) const;

    bool m_isCommand = false;
};
