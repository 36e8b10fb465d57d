#pragma once

#include "ui/accessibility/inputqueue.h"

#include <QGuiApplication>

/// The application object of the program. Main thread only.
class Application : public QGuiApplication
{
    Q_OBJECT

public:
    using QGuiApplication::QGuiApplication;

    bool notify(QObject *receiver, QEvent *event) override { return m_input.notify(receiver, event); }

private:
    InputQueue m_input{
        [this](QObject *receiver, QEvent *event) { return QGuiApplication::notify(receiver, event); }};
};
