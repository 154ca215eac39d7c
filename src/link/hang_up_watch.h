#pragma once

#include <QObject>

#include <functional>
#include <memory>

class QSerialPort;

/// Watches an open port for the line going away (an adapter pulled out) and calls `on_hang_up` from the
/// event loop, once. What tells of it differs by platform: one file each.
/// @return an object that watches as long as it lives.
[[nodiscard]] std::unique_ptr<QObject> watch_for_hang_up(QSerialPort& port, std::function<void()> on_hang_up);
