// Random schema files and lists of OIDs: well-formed for the most part, with
// keys that collide, and with all that a reader must cope with.
#ifndef TESTS_MODEL_RANDOMTEXTS_H_
#define TESTS_MODEL_RANDOMTEXTS_H_

#include <cstddef>
#include <initializer_list>
#include <random>
#include <string>
#include <vector>

class RandomTexts {
 public:
  explicit RandomTexts(unsigned int seed) : m_random(seed) {}

  // A schema file.
  std::string file();
  // One definition of a kind (0: attribute type, 1: object class, 2: storage
  // definition), from its opening parenthesis on.
  std::string definition(std::size_t kind);
  // A list of OIDs.
  std::string list();
  // An OID, name or other word that occurs in the files.
  std::string word();

  // A number below `limit`.
  std::size_t below(std::size_t limit) { return m_random() % limit; }
  // True once in `times`.
  bool once(std::size_t times) { return below(times) == 0; }
  std::string oneOf(std::initializer_list<const char *> words) {
    return words.begin()[below(words.size())];
  }

 private:
  using Tokens = std::vector<std::string>;

  void addSection(Tokens *tokens);
  void addDefinition(std::size_t kind, Tokens *tokens);
  void addClause(std::size_t kind, Tokens *tokens);
  void addTypeClause(Tokens *tokens);
  void addClassClause(Tokens *tokens);
  void addStorageClause(Tokens *tokens);
  void addNames(Tokens *tokens);
  void addDollarList(Tokens *tokens);
  std::string oid();
  std::string name();
  std::string anyToken();
  void damage(Tokens *tokens);
  std::string laidOut(const Tokens &tokens);
  void damage(std::string *text);

  std::mt19937 m_random;
};

#endif  // TESTS_MODEL_RANDOMTEXTS_H_
