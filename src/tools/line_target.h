#pragma once

#include "link/reader_link.h"
#include "tools/terminal_keys.h"

/// A terminal whose typed characters go out on the one serial line. How they are shown is its own.
class LineTarget : public KeyTarget {
 protected:
  explicit LineTarget(ReaderLink& link) : link_(link) {}

 private:
  [[nodiscard]] bool port_open() const override { return link_.comopen(); }
  [[nodiscard]] std::uint8_t address_byte() const override { return link_.address_byte(); }
  bool send(char byte) override { return link_.write(std::string_view(&byte, 1)); }

  ReaderLink& link_;
};
