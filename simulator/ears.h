#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace readersim {

/// One thing made out in the stream of bytes from the host.
struct Heard {
  enum class Kind {
    command,      ///< a command, whole
    acknowledge,  ///< the host's ACK between commands
    foreign,      ///< a whole frame that is not for this kind of ear
    noise,        ///< bytes that are neither
  };
  Kind kind;
  int address = -1;   ///< of a network frame: 0 to 126, 127 for all readers
  std::string text;   ///< the command alone
  std::string bytes;  ///< all of it as it came, the frame included
};

/// How readers in protocol mode hear: address byte (0x80 and above), STX, text, ETX. Everything
/// outside such frames is noise. An address byte followed by STX always begins a frame anew.
class NetworkEar {
 public:
  [[nodiscard]] std::vector<Heard> hear(std::string_view bytes);
  void forget();

 private:
  void hear_one(char byte, std::vector<Heard>& heard);

  std::string pending_;
  bool in_frame_ = false;
};

/// How readers on a plain line hear: text, CR. A network frame that comes by is skipped.
class PlainEar {
 public:
  [[nodiscard]] std::vector<Heard> hear(std::string_view bytes);
  void forget();

 private:
  std::string pending_;
  bool in_frame_ = false;
};

}  // namespace readersim
