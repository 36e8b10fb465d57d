#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>

/// Everything that goes over a message bus as long as it is there, as bytes. Texts are UTF-8 in them. Main
/// thread only.
class BusRecording
{
public:
    /// Starts recording; failure ends the test program.
    explicit BusRecording(const QString &busAddress);
    ~BusRecording();
    Q_DISABLE_COPY_MOVE(BusRecording)

    /// Of the accessibility bus and of the session's.
    [[nodiscard]] static QString accessibilityAddress();
    [[nodiscard]] static QString sessionAddress();

    /// All that was recorded so far.
    [[nodiscard]] QByteArray bytes();

private:
    QProcess m_monitor;
    QByteArray m_bytes;
};
