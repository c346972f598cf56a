#include <cstddef>
#include <string>

#include "SchemaLexan.h"
#include "Support.h"
#include "Targets.h"
#include "model/Rendering.h"
#include "model/Scanner.h"

namespace {

std::string state(int code, int current, int index, int line,
                  const std::string &text) {
  return std::to_string(code) + " current " + std::to_string(current) +
         " index " + std::to_string(index) + " line " + std::to_string(line) +
         ' ' + shown(text);
}

}  // namespace

void fuzzScanner(std::string_view input) {
  const Scratch directory("scanner");
  // The first byte says where the others lie in the stream's buffer.
  std::size_t ahead = 0;
  if (!input.empty()) {
    ahead = static_cast<unsigned char>(input.front());
    input.remove_prefix(1);
  }
  const std::string text = acrossTheBuffer(std::string(input), ahead);
  directory.write("text", text);
  SchemaLexan lexan(directory.path(), "text");
  model::Trace untraced;
  model::Scanner model(text, &untraced);
  // At one time or other the whole symbol table is asked for.
  const std::size_t tableAt = text.size() % 7;
  std::size_t calls = 0;
  for (int ends = 0; ends < 3; ++calls) {
    expect(calls < text.size() + 3, "no more tokens than characters");
    if (calls == tableAt) {
      expect(lexan.isString(0), "the first keyword");
    }
    const int code = lexan.lexan();
    std::string word;
    lexan.getStringValue(lexan.getTokenValIndex(), word);
    const int expected = model.lexan();
    expectEqual(state(code, lexan.getCurrentToken(), lexan.getTokenValIndex(),
                      lexan.getLineNumber(), word),
                state(expected, model.current(), model.index(), model.line(),
                      model.text()),
                "token");
    ends += code == TOK_DONE ? 1 : 0;
  }
}
