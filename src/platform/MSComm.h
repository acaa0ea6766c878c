#pragma once

#include <QObject>

#include <chrono>
#include <memory>
#include <string>
#include <string_view>

class QSocketNotifier;

namespace vorn
{

class SerialPorts;

/// Serial port control: one port of the machine, 8 data bits, no parity, 1 stop bit, every byte 0 to 255 as
/// it is.
///
/// Failures are thrown as `RuntimeError`: 8002 the port doesn't exist (or isn't a terminal device), 8005 it
/// is held by another owner or may not be used, 380 the settings are no settings, 8018 there is no open port
/// to act on. A device that vanishes while it is open looks like silence from then on.
class MSComm final : public QObject
{
    Q_OBJECT

public:
    explicit MSComm(const SerialPorts &ports, QObject *parent = nullptr);
    ~MSComm() override;

    /// The machine's ports, for another control.
    const SerialPorts &Ports() const { return ports_; }

    int CommPort() const { return port_; }
    void SetCommPort(int port) { port_ = port; }

    /// "baud,N,8,1". Takes effect at the next opening.
    void SetSettings(const std::string &settings);
    const std::string &Settings() const { return settings_; }

    /// Characters that one `Input` takes at most; 0 takes all that is there.
    void SetInputLen(int length) { inputLen_ = length; }
    int InputLen() const { return inputLen_; }

    bool PortOpen() const { return fd_ >= 0; }
    /// The device has vanished since the port was opened.
    bool HasGone() const { return hungUp_; }
    void SetPortOpen(bool open);

    /// Whether the device has vanished since the port was opened, as far as was noticed.
    bool HungUp() const { return hungUp_; }

    /// Characters received and not yet taken.
    int InBufferCount();
    /// Throws away what was received and not yet taken (the control's "InBufferCount = 0").
    void ClearInBuffer();

    /// Takes bytes to be sent. What the line doesn't take at once follows while the control waits for input.
    void Output(std::string_view bytes);
    std::string Input();

    /// Number of received characters from which on `OnComm` is raised; 0 never.
    void SetRThreshold(int count);
    int RThreshold() const { return rThreshold_; }

    /// Waits until something was received or `time` has gone; serves no window events.
    void WaitForInput(std::chrono::milliseconds time);
    /// The same, but returns at a window event too, which it serves.
    void WaitForInputOrEvents(std::chrono::milliseconds time);

Q_SIGNALS:
    /// The receive event: at least `RThreshold` characters are there.
    void OnComm();

private:
    void Open();
    void Close();
    void ApplyLine();
    void Receive();
    void Send();
    void Watch();

    const SerialPorts &ports_;
    int port_ = 1;
    std::string settings_ = "9600,N,8,1";
    int baud_ = 9600;
    int inputLen_ = 0;
    int rThreshold_ = 0;
    int fd_ = -1;
    bool hungUp_ = false;
    std::string received_;
    std::string unsent_;
    std::unique_ptr<QSocketNotifier> notifier_;
};

} // namespace vorn
