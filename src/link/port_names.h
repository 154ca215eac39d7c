#pragma once

#include <QString>

/// The device of Com Port `port_number` (1 to 5): the environment's TARVOS_COMn where it is set, otherwise
/// the system's own. Empty when there is none.
[[nodiscard]] QString device_of_com_port(int port_number);

/// The device that the system itself has for the number: the n-th real serial port in a stable order, or
/// COMn where ports carry numbers. One file a platform.
[[nodiscard]] QString system_device_of_com_port(int port_number);

/// Whether a device comes before another one in that order: by name, numbers as numbers (ttyUSB2 before
/// ttyUSB10), the same under every locale.
[[nodiscard]] bool comes_before(const QString& device, const QString& other);
