#include "link/comm_settings.h"

#include <gtest/gtest.h>

namespace {

TEST(comm_settings, every_run_starts_from_the_defaults) {
  const CommSettings settings;
  EXPECT_EQ(settings.port_number, 1);
  EXPECT_EQ(settings_string(settings), "9600,N,8,1");
  EXPECT_FALSE(settings.network_mode);
  EXPECT_EQ(settings.reader_address, "0");
}

TEST(settings_string, seven_data_bits_with_even_parity_at_2400_baud) {
  CommSettings settings;
  settings.baud = 2400;
  settings.parity = Parity::even;
  settings.data_bits = 7;
  EXPECT_EQ(settings_string(settings), "2400,E,7,1");
}

TEST(settings_string, names_every_choice) {
  struct Row {
    int baud;
    Parity parity;
    int data_bits;
    const char* text;
  };
  for (const Row& row : {Row{1200, Parity::none, 8, "1200,N,8,1"}, Row{2400, Parity::odd, 8, "2400,O,8,1"},
                         Row{4800, Parity::even, 8, "4800,E,8,1"}, Row{9600, Parity::none, 7, "9600,N,7,1"},
                         Row{19200, Parity::odd, 7, "19200,O,7,1"}}) {
    CommSettings settings;
    settings.baud = row.baud;
    settings.parity = row.parity;
    settings.data_bits = row.data_bits;
    EXPECT_EQ(settings_string(settings), row.text);
  }
}

}  // namespace
