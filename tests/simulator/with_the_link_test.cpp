// The program's link against the simulated readers at virtual time: replies of every shape, as the
// program's own reading makes them out.

#include "link/reader_link.h"
#include "support/bytes.h"
#include "support/scripted_dialogs.h"
#include "support/sim_port.h"

#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;

class WiredLink : public testing::Test {
 protected:
  WiredLink() { link.open_at_start_up(); }

  /// The one reader becomes one of a network.
  void use_network() {
    settings.network_mode = true;
    settings.reader_address = "0";
    reader.protocol_mode = true;
    ASSERT_TRUE(link.setnetaddr());
  }
  /// One request as an upload sends it; nothing when it fails.
  std::optional<std::string> request(std::string_view command) {
    link.write_frame(command);
    std::string reply;
    return link.getinput(reply, 500, 250ms, true, true) ? std::optional{reply} : std::nullopt;
  }
  /// Fetches everything, as an upload does.
  std::vector<std::string> upload() {
    (void)request("lr");  // answered with an acknowledge at most
    link.clearcomm();
    std::vector<std::string> records;
    std::optional<std::string> reply;
    while ((reply = request("l")) != "END") {
      if (!reply) {
        ADD_FAILURE() << "after " << records.size() << " records";
        break;
      }
      records.push_back(*reply);
    }
    return records;
  }

  TestPump pump;
  SimPort port{pump, readersim::Family::ferro_kesh};
  ScriptedDialogs dialogs{&pump};
  CommSettings settings;
  ReaderLink link{port, pump, dialogs, settings};
  readersim::Reader& reader = port.reader(0);
};

TEST_F(WiredLink, reads_every_record_that_ends_in_an_end_character_whole) {
  for (const bool network : {false, true}) {
    if (network) {
      use_network();
    }
    for (int code = 0; code < 256; ++code) {
      const std::string record = "1234" + std::string(1, static_cast<char>(code));
      reader.log = {{record}, 0};
      EXPECT_TRUE(bytes_equal(request("l").value_or(""), record)) << code;
      EXPECT_EQ(request("l"), "END");
    }
  }
}

TEST_F(WiredLink, reads_a_record_up_to_the_length_limit) {
  reader.log = {{std::string(499, 'x')}, 0};
  EXPECT_EQ(request("l"), std::string(499, 'x'));
  use_network();
  reader.log = {{std::string(498, 'x')}, 0};
  EXPECT_EQ(request("l"), std::string(498, 'x'));
}

TEST_F(WiredLink, uploads_20000_made_up_records_without_a_difference_on_both_kinds_of_line) {
  port.console("fill 0 20000");
  EXPECT_EQ(upload(), reader.log.records);
  use_network();
  port.console("fill 0 20000 150");
  EXPECT_EQ(upload(), reader.log.records);
}

TEST_F(WiredLink, the_third_character_of_a_download_s_answer_is_the_verdict) {
  SimPort access{pump, readersim::Family::orin};
  ASSERT_TRUE(access.open(settings));
  ASSERT_TRUE(access.write("AC0011234567890\r"));
  pump.idle(250ms);
  EXPECT_GE(access.bytes_waiting(), 2U);
  EXPECT_EQ(access.read_char(), 'A');
  access.discard_received();
  access.reader(0).protocol_mode = true;
  for (const char letter : {'A', 'N'}) {
    access.console(std::string{"answer 0 "} + letter);
    ASSERT_TRUE(
        access.write("\x80\x02"
                     "AC0011234567890\x03"));
    pump.idle(50ms);  // the shortest pause before it is read
    ASSERT_GE(access.bytes_waiting(), 4U);
    (void)access.read_char();
    (void)access.read_char();
    EXPECT_EQ(access.read_char(), letter);
    access.discard_received();
  }
}

TEST_F(WiredLink, a_poll_is_answered_in_time_to_be_counted) {
  port.console("swipe 0 4711");
  use_network();
  port.console("swipe 0 4711");
  ASSERT_TRUE(port.write("\x80\x02?\x03"));
  pump.idle(20ms);
  EXPECT_EQ(port.read_char(), '\x06');
  pump.idle(30ms);
  EXPECT_GE(port.bytes_waiting(), 3U);
  EXPECT_EQ(port.read_char(), '\x80');
  EXPECT_EQ(port.read_char(), '\x01');
}

}  // namespace
