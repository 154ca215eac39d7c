#pragma once

#include "simulator/ears.h"
#include "simulator/event.h"
#include "simulator/fault.h"
#include "simulator/seat.h"
#include "simulator/time_point.h"
#include "simulator/verdict.h"
#include "simulator/wire.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace readersim {

/// A serial line with its readers: one on a plain line, or up to 127 on a multi-drop network. It has
/// no clock and no port: whoever drives it feeds it the host's bytes and collects the readers'.
class Line {
 public:
  struct Options {
    std::uint32_t seed = 1;                      ///< of all random bytes
    bool paced = false;                          ///< bytes take their time at the readers' baud rate
    std::chrono::milliseconds answer_delay{20};  ///< from the end of a frame to the answer's first byte
  };
  /// Bytes due on the wire at one moment, or the line hanging up.
  struct Output {
    TimePoint at{0};
    std::string bytes;
    bool hang_up = false;
  };
  static constexpr std::size_t most_readers = highest_address + 1;  ///< one for each address

  explicit Line(Options options);
  Line() : Line(Options{}) {}

  /// Adds a reader fresh from the factory; on a network it is in protocol mode from the start. Throws
  /// std::length_error, and adds none, when most_readers are there.
  Seat& add(Family family, int address, bool protocol_mode);
  /// All places in the order they were added. A reference stays good as long as the line.
  [[nodiscard]] const std::vector<std::unique_ptr<Seat>>& seats() const { return seats_; }
  /// The first reader whose address is that at present; nullptr when there is none.
  [[nodiscard]] Seat* find(int address);

  /// Bytes from the host. `now` never goes back.
  void receive(std::string_view bytes, TimePoint now);
  /// When the next bytes are due; nothing when the readers have no more to say.
  [[nodiscard]] std::optional<TimePoint> next_due() const;
  /// Takes what is due up to and including `now`, in order. After an Output with hang_up set the line
  /// is dead until replug().
  [[nodiscard]] std::vector<Output> take_due(TimePoint now);
  /// The same as one string, for whoever does not care about the times; "" after a hang-up.
  [[nodiscard]] std::string take_bytes(TimePoint now);

  /// How the host sends and hears, as far as that is known. A reader set otherwise neither hears nor
  /// is understood. Unknown at first: then every reader hears.
  void set_host_baud(std::optional<int> baud);
  void set_host_data(std::optional<DataFormat> data);

  /// Draws a card through a reader.
  Swipe swipe(Seat& seat, std::string_view card, TimePoint now);
  /// The line goes dead, as when an adapter is unplugged: what is under way is lost.
  void hang_up(TimePoint now);
  void replug(TimePoint now);
  [[nodiscard]] bool hung_up() const { return hung_up_; }
  /// Is told everything that happens, as it happens.
  void set_observer(std::function<void(const Event&)> observer) { observer_ = std::move(observer); }
  void note(std::string text, TimePoint now, int address = Event::nobody);

 private:
  struct Due {
    Output output;
    std::optional<Event> event;  // told when the output has been taken: the last of an answer
  };

  struct Listeners {
    bool network = false;
    bool plain = false;
  };

  void handle_network(const Heard& heard, Listeners listeners, TimePoint now);
  void handle_plain(const Heard& heard, Listeners listeners, TimePoint now);
  void handle_acknowledge(const Heard& heard, TimePoint now);
  void handle_command(const Heard& heard, bool network, TimePoint now);
  void answer_all(std::vector<std::pair<Seat*, Answer>>& answers, TimePoint earliest);
  void send(Seat& seat, const Answer& answer, TimePoint earliest);
  void put(Due due);
  [[nodiscard]] bool addressed(Seat& seat, const Heard& heard, bool network) const;
  [[nodiscard]] bool understands(const Reader& reader) const;
  [[nodiscard]] bool any_deaf(bool network) const;
  [[nodiscard]] Listeners who_listens() const;
  /// What is left of a byte on the wire: with seven data bits the eighth is never sent.
  [[nodiscard]] char on_wire(char byte) const;
  [[nodiscard]] TimePoint byte_time(int baud) const;
  void tell(const Event& event) const;

  Options options_;
  std::vector<std::unique_ptr<Seat>> seats_;
  std::deque<Due> due_;
  NetworkEar network_ear_;
  PlainEar plain_ear_;
  Random random_;
  std::function<void(const Event&)> observer_;
  std::optional<int> host_baud_;
  std::optional<DataFormat> host_data_;
  TimePoint host_free_at_{0};
  Seat* spoken_to_ = nullptr;
  bool hung_up_ = false;
};

}  // namespace readersim
