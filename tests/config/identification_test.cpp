#include "config/identification.h"

#include "support/link_bench.h"

namespace {

const std::string plain_request = "V\r";
const std::string network_request = "\x85\x02V\x03";
const std::string text = "ORIN V2.10 SN000123";

std::string network_reply(const std::string& data) {
  return "\x06\x02" + data + "\x03";
}

}  // namespace

TEST(identification, asks_twice_and_gives_the_second_reply) {
  LinkBench bench;
  bench.port.answer(plain_request, "0123456789\r");
  bench.port.answer(plain_request, text + "\r");
  EXPECT_EQ(read_identification(bench.link, bench.dialogs), text);
  EXPECT_TRUE(bytes_equal(bench.port.written(), "V\rV\r"));
}

TEST(identification, a_network_read_ends_with_two_acknowledges) {
  LinkBench bench;
  bench.use_network("5");
  bench.port.answer(network_request, network_reply(text));
  bench.port.answer(network_request, network_reply(text));
  EXPECT_EQ(read_identification(bench.link, bench.dialogs), text);
  EXPECT_TRUE(bytes_equal(bench.port.written(), network_request + "\x06" + network_request + "\x06\x06"));
}

TEST(identification, a_closed_port_is_told_and_nothing_sent) {
  LinkBench bench;
  bench.link.closecomm();
  bench.dialogs.expect_message("Comm port is not open");
  EXPECT_EQ(read_identification(bench.link, bench.dialogs), std::nullopt);
}

TEST(identification, a_blank_address_is_told_and_nothing_sent) {
  LinkBench bench;
  bench.settings.reader_address = "";
  bench.dialogs.expect_message("A Network address has not been set");
  EXPECT_EQ(read_identification(bench.link, bench.dialogs), std::nullopt);
  EXPECT_EQ(bench.port.written(), "");
}

TEST(identification, the_global_address_on_a_network_is_refused) {
  LinkBench bench;
  bench.use_network("127");
  bench.dialogs.expect_message("Cannot read from unit 127");
  EXPECT_EQ(read_identification(bench.link, bench.dialogs), std::nullopt);
  EXPECT_EQ(bench.port.written(), "");
}

TEST(identification, address_127_on_a_plain_line_is_read) {
  LinkBench bench;
  bench.settings.reader_address = "127";
  bench.port.answer(plain_request, text + "\r");
  bench.port.answer(plain_request, text + "\r");
  EXPECT_EQ(read_identification(bench.link, bench.dialogs), text);
}

TEST(identification, a_reader_that_is_not_there_is_told) {
  LinkBench bench;
  bench.dialogs.expect_message("Reader is not Connected");
  EXPECT_EQ(read_identification(bench.link, bench.dialogs), std::nullopt);
  EXPECT_TRUE(bytes_equal(bench.port.written(), plain_request));
}

TEST(identification, two_characters_and_silence_are_a_communication_error) {
  LinkBench bench;
  bench.port.answer(plain_request, text + "\r");
  bench.port.answer(plain_request, "OR");
  bench.dialogs.expect_message("Error communicating with reader\rMake sure reader is connected and powered");
  EXPECT_EQ(read_identification(bench.link, bench.dialogs), std::nullopt);
}

TEST(identification, three_characters_and_silence_are_shown) {
  LinkBench bench;
  bench.port.answer(plain_request, text + "\r");
  bench.port.answer(plain_request, "ORI");
  EXPECT_EQ(read_identification(bench.link, bench.dialogs), "ORI");
}

TEST(identification, on_a_network_the_same_holds_for_what_follows_the_lead_in) {
  LinkBench bench;
  bench.use_network("5");
  bench.port.answer(network_request, network_reply(text));
  bench.port.answer(network_request, "\x06\x02O");
  bench.dialogs.expect_message("Error communicating with reader\rMake sure reader is connected and powered");
  EXPECT_EQ(read_identification(bench.link, bench.dialogs), std::nullopt);
  bench.port.answer(network_request, network_reply(text));
  bench.port.answer(network_request, "\x06\x02OR");
  EXPECT_EQ(read_identification(bench.link, bench.dialogs), "\x02OR");
}

TEST(identification, the_second_reply_may_pause_250_ms_but_the_first_only_100) {
  LinkBench bench;
  bench.port.answer(plain_request, text + "\r");
  bench.port.answer(plain_request, text + "\r", std::chrono::milliseconds(240));
  EXPECT_EQ(read_identification(bench.link, bench.dialogs), text);
  bench.port.answer(plain_request, text + "\r", std::chrono::milliseconds(120));
  bench.dialogs.expect_message("Reader is not Connected");
  EXPECT_EQ(read_identification(bench.link, bench.dialogs), std::nullopt);
}

TEST(identification, a_reply_of_more_than_55_characters_is_cut_there) {
  LinkBench bench;
  const std::string long_text(80, 'x');
  bench.port.answer(plain_request, text + "\r");
  bench.port.answer(plain_request, long_text + "\r");
  EXPECT_EQ(read_identification(bench.link, bench.dialogs), std::string(55, 'x'));
  EXPECT_EQ(bench.port.waiting(), "");
}
