#include "link/reader_link.h"

#include "link/frame.h"
#include "link/messages.h"
#include "link/numbers.h"

ReaderLink::ReaderLink(SerialPort& port, EventPump& pump, Dialogs& dialogs, const CommSettings& settings)
    : port_(port), pump_(pump), dialogs_(dialogs), settings_(settings) {
  port_.on_hang_up = [this] { closecomm(); };
}

ReaderLink::~ReaderLink() {
  port_.on_hang_up = nullptr;
}

bool ReaderLink::opencomm() {
  comopen_ = port_.open(settings_);
  return comopen_;
}

void ReaderLink::closecomm() {
  if (comopen_) {
    port_.close();
  }
  comopen_ = false;
}

void ReaderLink::restorecomm() {
  if (starting_up_) {
    return;
  }
  closecomm();
  if (!opencomm()) {
    dialogs_.message(messages::unable_to_open);
  }
}

bool ReaderLink::checkcom() {
  if (!comopen_) {
    dialogs_.message(messages::port_not_open);
  }
  return comopen_;
}

void ReaderLink::open_at_start_up() {
  starting_up_ = !opencomm();
}

void ReaderLink::clearcomm() {
  while (port_.bytes_waiting() >= 1) {
    port_.read_char();
  }
}

void ReaderLink::discard_received() {
  port_.discard_received();
}

void ReaderLink::discard_then_clear() {
  discard_received();
  clearcomm();
}

void ReaderLink::clear_then_discard() {
  clearcomm();
  discard_received();
}

bool ReaderLink::setnetaddr() {
  network_mode_ = settings_.network_mode;
  const std::optional<std::int64_t> address = leading_number(settings_.reader_address);
  if (!address || *address < 0 || *address > global_address) {
    dialogs_.message(messages::address_not_set);
    return false;
  }
  address_byte_ = address_byte_of(static_cast<int>(*address));
  return true;
}

bool ReaderLink::to_all_readers() const {
  return network_mode_ && address_byte_ == address_byte_of(global_address);
}

std::string ReaderLink::frame(std::string_view command) const {
  return network_mode_ ? network_frame(address_byte_, command) : plain_frame(command);
}

bool ReaderLink::write_ack() {
  return port_.write(std::string_view(&wire::ack, 1));
}

void ReaderLink::commerror() {
  dialogs_.message(messages::comm_error);
}

void ReaderLink::notconnected() {
  dialogs_.message(messages::not_connected);
}

void ReaderLink::protectedbox() {
  dialogs_.message(messages::password_protected);
}
