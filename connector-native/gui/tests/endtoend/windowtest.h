#pragma once

#include "application.h"
#include "desktop.h"
#include "mainwindow.h"

#include <QColor>
#include <QObject>

#include <memory>

/// What tests of the window start from: before each test function the program runs beside a simulator that
/// knows nothing yet, with the commands of the start-up done; after it, the program must have complained
/// about nothing. A test class derives from this and adds its functions as private slots. Who needs another
/// start overrides init().
class WindowTest : public QObject
{
    Q_OBJECT

protected:
    /// Commands that the program runs when it is started.
    static constexpr int startupCalls = 9;
    /// Commands that a refresh runs.
    static inline const QList<QStringList> refreshCalls = {{QStringLiteral("status")},
                                                           {QStringLiteral("server-health")},
                                                           {QStringLiteral("bind-status")},
                                                           {QStringLiteral("status")}};
    static constexpr QColor accent{10, 97, 219};
    /// Nine tenths of it on white.
    static constexpr QColor accentPressed{35, 113, 223};

    [[nodiscard]] Application &application() const { return *m_application; }
    [[nodiscard]] const MainWindow &window() const { return *m_window; }

    /// Ends the program, if there is one, and lays out a new one with its simulator, not started yet.
    void renew();
    /// Starts the program and waits for the commands of the start-up.
    void start();
    /// The same of a program that has been launched.
    void awaitStart();

    /// Goes to an exchange by its tab.
    void select(const QString &exchange) const;
    /// Replaces what the field below a caption holds.
    void typeInto(const QString &caption, const QString &text) const;
    void openLog() const;
    /// Opens the context menu of a field or an output with the right button, and clicks an entry of it.
    void chooseFromMenu(const AccessibleNode &text, const QString &title) const;
    /// The arguments of the simulator's last calls, oldest first.
    [[nodiscard]] QList<QStringList> lastCalls(int count) const { return application().calls().last(count); }

protected slots:
    virtual void init();

private slots:
    void initTestCase();
    void cleanup();

private:
    std::unique_ptr<Application> m_application;
    std::unique_ptr<MainWindow> m_window;
};

/// What tests of the keyboard start from: the window has the keyboard, as a window manager gives it.
class ActiveWindowTest : public WindowTest
{
    Q_OBJECT

protected:
    [[nodiscard]] const desktop::WindowManager &windowManager() const { return m_manager; }

protected slots:
    void init() override;

private:
    // There before the program, as on any desktop.
    const desktop::WindowManager m_manager;
};
