// dom_parse FILE
//
// The yardstick for a whole process. It reads the file, parses it with simdjson's DOM, and prints
// the number of the manifest's entries.
#include <simdjson.h>

#include <exception>
#include <iostream>
#include <stdexcept>

int main(int argumentCount, char** arguments) {
  try {
    if (argumentCount != 2) {
      throw std::invalid_argument("wants a file");
    }
    simdjson::dom::parser parser;
    const simdjson::dom::element manifest = parser.load(arguments[1]);
    std::cout << manifest["entries"].get_array().size() << '\n';
  } catch (const std::exception& error) {
    std::cerr << "dom_parse: " << error.what() << '\n';
    return 1;
  }
  return 0;
}
