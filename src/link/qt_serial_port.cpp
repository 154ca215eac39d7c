#include "link/qt_serial_port.h"

#include "link/hang_up_watch.h"
#include "link/port_names.h"
#include "link/timings.h"

#include <chrono>

namespace {

constexpr qint64 receive_buffer_size = 1024;
constexpr int bits_per_character = 11;  // start, eight data, parity, stop: the longest there is

std::size_t index_of(int port_number) {
  return static_cast<std::size_t>(port_number - 1);
}

/// How long the line may take for so many bytes before the write counts as failed.
std::chrono::milliseconds time_for(std::size_t bytes, qint32 baud) {
  const auto bits = static_cast<std::int64_t>(bytes) * bits_per_character;
  return timings::write_margin + std::chrono::milliseconds(bits * 1000 / baud);
}

}  // namespace

QtSerialPort::QtSerialPort() {
  QObject::connect(&port_, &QSerialPort::readyRead, &port_, [this] {
    if (on_arrival) {
      on_arrival();
    }
  });
}

QtSerialPort::~QtSerialPort() {
  QtSerialPort::close();
}

bool QtSerialPort::open(const CommSettings& settings) {
  close();
  std::string& why = open_errors_.at(index_of(settings.port_number));
  const QString device = device_of_com_port(settings.port_number);
  if (device.isEmpty()) {
    why = "there is no such port";
    return false;
  }
  port_.setPortName(device);
  apply(settings);
  if (!port_.open(QIODevice::ReadWrite)) {
    why = port_.errorString().toStdString();
    return false;
  }
  why.clear();
  hang_up_watch_ = watch_for_hang_up(port_, [this] { hung_up(); });
  return true;
}

/// Everything is set before the port opens: some devices refuse a change afterwards.
void QtSerialPort::apply(const CommSettings& settings) {
  port_.setBaudRate(settings.baud);
  port_.setDataBits(settings.data_bits == 7 ? QSerialPort::Data7 : QSerialPort::Data8);
  switch (settings.parity) {
    case Parity::none:
      port_.setParity(QSerialPort::NoParity);
      break;
    case Parity::even:
      port_.setParity(QSerialPort::EvenParity);
      break;
    case Parity::odd:
      port_.setParity(QSerialPort::OddParity);
      break;
  }
  port_.setStopBits(QSerialPort::OneStop);
  port_.setFlowControl(QSerialPort::NoFlowControl);
  port_.setReadBufferSize(receive_buffer_size);
}

void QtSerialPort::close() {
  hang_up_watch_.reset();
  if (port_.isOpen()) {
    port_.close();
  }
}

void QtSerialPort::hung_up() {
  // This runs inside the watch's own event: it may go only after that.
  hang_up_watch_.release()->deleteLater();
  close();
  if (on_hang_up) {
    on_hang_up();
  }
}

bool QtSerialPort::write(std::string_view bytes) {
  if (!port_.isOpen() || port_.write(bytes.data(), static_cast<qint64>(bytes.size())) < 0) {
    return false;
  }
  const auto end = std::chrono::steady_clock::now() + time_for(bytes.size(), port_.baudRate());
  // A wait in which bytes arrive for a full buffer is broken off by the library, and nothing goes out.
  port_.setReadBufferSize(0);
  const bool written = wait_until_written(end);
  port_.setReadBufferSize(receive_buffer_size);
  if (!written) {
    port_.clear(QSerialPort::Output);
  }
  return written;
}

bool QtSerialPort::wait_until_written(std::chrono::steady_clock::time_point end) {
  while (port_.bytesToWrite() > 0) {
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
    if (left.count() <= 0 || !port_.waitForBytesWritten(static_cast<int>(left.count()))) {
      return false;
    }
  }
  return true;
}

std::size_t QtSerialPort::bytes_waiting() {
  if (!port_.isOpen()) {
    return 0;
  }
  // Never asked while bytes are buffered: it would then wait its whole time.
  if (port_.bytesAvailable() == 0) {
    port_.waitForReadyRead(0);
  }
  return static_cast<std::size_t>(port_.bytesAvailable());
}

std::optional<char> QtSerialPort::read_char() {
  char character = 0;
  if (bytes_waiting() == 0 || !port_.getChar(&character)) {
    return std::nullopt;
  }
  return character;
}

void QtSerialPort::discard_received() {
  if (port_.isOpen()) {
    port_.clear(QSerialPort::Input);
  }
}

std::string QtSerialPort::device_of(int port_number) const {
  return device_of_com_port(port_number).toStdString();
}

std::string QtSerialPort::open_error(int port_number) const {
  return open_errors_.at(index_of(port_number));
}
