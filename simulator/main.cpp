#include "simulator/program.h"
#include "simulator/words.h"

#include <exception>
#include <iostream>

int main(int argc, char** argv) {
  try {
    const readersim::Options options = readersim::parse_options({argv + 1, argv + argc});
    if (options.help) {
      std::cout << readersim::usage();
      return 0;
    }
    if (options.version) {
      std::cout << "readersim " TARVOS_VERSION "\n";
      return 0;
    }
    return readersim::run_program(options);
  } catch (const readersim::Mistake& mistake) {
    std::cerr << "readersim: " << mistake.what() << "\nTry readersim --help\n";
    return 2;
  } catch (const std::exception& error) {
    std::cerr << "readersim: " << error.what() << "\n";
    return 1;
  }
}
