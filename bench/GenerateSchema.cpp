// generate_schema DIR N writes a corpus of N definitions into DIR: the schemas
// old/ and new/, and the old one's definitions as RFC 4512 has them.
#include <exception>
#include <filesystem>
#include <iostream>
#include <string>

#include "SchemaGenerator.h"

int main(int argc, char **argv) {
  if (argc != 3) {
    std::cerr << "usage: generate_schema DIR N\n";
    return 5;
  }
  try {
    generateCorpus(argv[1], std::stoul(argv[2]));
    return 0;
  } catch (const std::exception &error) {
    std::cerr << "generate_schema: " << error.what() << '\n';
    return 4;
  }
}
