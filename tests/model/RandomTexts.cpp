#include "model/RandomTexts.h"

namespace {

void add(std::vector<std::string> *tokens,
         std::initializer_list<std::string> added) {
  tokens->insert(tokens->end(), added);
}

}  // namespace

std::string RandomTexts::file() {
  Tokens tokens;
  for (std::size_t count = below(7); count > 0; --count) {
    addSection(&tokens);
    if (once(10)) {
      tokens.push_back(anyToken());
    }
  }
  if (once(3)) {
    damage(&tokens);
  }
  std::string text = laidOut(tokens) + (once(8) ? "" : "\n");
  if (once(6)) {
    damage(&text);
  }
  // Some lie across the places where pieces of a large file meet.
  return once(4) ? std::string((once(2) ? 900 : 8000) + below(200), ' ') + text
                 : text;
}

std::string RandomTexts::definition(std::size_t kind) {
  Tokens tokens;
  addDefinition(kind, &tokens);
  if (once(3)) {
    damage(&tokens);
  }
  std::string text = laidOut(tokens) + (once(8) ? "" : "\n");
  if (once(6)) {
    damage(&text);
  }
  return text;
}

std::string RandomTexts::list() {
  std::string text;
  for (std::size_t count = below(8); count > 0; --count) {
    text += once(6) ? "#" : once(9) ? word() + "#x" : word();
    text += oneOf({"\n", "\n", " ", "\t", "\r\n", "\v", "\f", "\n\n"});
  }
  return text + oneOf({"", "", "\n", "2.5", "#\n", "# x", "#x"});
}

std::string RandomTexts::word() { return once(3) ? name() : oid(); }

void RandomTexts::addSection(Tokens *tokens) {
  const std::size_t kind = below(3);
  tokens->push_back(kind == 0 ? oneOf({"attributetypes", "attributeTypes"})
                    : kind == 1
                        ? oneOf({"objectclasses", "objectClasses"})
                        : oneOf({"QORAttributetypes", "QORattributeTypes"}));
  if (once(40)) {
    return;
  }
  if (!once(5)) {
    tokens->push_back("=");
    addDefinition(kind, tokens);
    return;
  }
  tokens->push_back("{");
  for (std::size_t count = below(4); count > 0; --count) {
    addDefinition(kind, tokens);
  }
  add(tokens, {"(", "2.5.4.3", ")", "}"});
}

void RandomTexts::addDefinition(std::size_t kind, Tokens *tokens) {
  tokens->push_back("(");
  if (!once(12)) {
    tokens->push_back(oid());
  }
  if (kind != 2 && !once(8)) {
    tokens->push_back("NAME");
    addNames(tokens);
    add(tokens, {"DESC", oneOf({"'x'", "'a (b) $ c.d'", "''"})});
  }
  for (std::size_t count = below(6); count > 0; --count) {
    addClause(once(12) ? below(3) : kind, tokens);
  }
  tokens->push_back(")");
}

void RandomTexts::addClause(std::size_t kind, Tokens *tokens) {
  if (kind == 0) {
    addTypeClause(tokens);
  } else if (kind == 1) {
    addClassClause(tokens);
  } else {
    addStorageClause(tokens);
  }
}

void RandomTexts::addTypeClause(Tokens *tokens) {
  const std::string keyword = oneOf(
      {"DESC", "OBSOLETE", "SUP", "EQUALITY", "ORDERING", "SUBSTR", "SYNTAX",
       "SYNTAX", "SINGLE-VALUE", "NO-USER-MODIFICATION", "USAGE", "NAME"});
  tokens->push_back(once(80) ? "COLLECTIVE" : keyword);
  if (keyword == "NAME") {
    addNames(tokens);
  } else if (keyword == "SYNTAX") {
    tokens->push_back(oid() + oneOf({"", "{64}", " {64}", "{", "{6", "\t{6}"}));
  } else if (keyword == "DESC" || keyword == "USAGE") {
    tokens->push_back(oneOf({"'x y'", "directoryOperation", "'MAY'"}));
  } else if (keyword == "SUP" || keyword == "EQUALITY" ||
             keyword == "ORDERING" || keyword == "SUBSTR") {
    tokens->push_back(once(4) ? name() : oid());
  }
}

void RandomTexts::addClassClause(Tokens *tokens) {
  const std::string keyword =
      oneOf({"DESC", "OBSOLETE", "SUP", "MUST", "MAY", "MUST", "MAY",
             "STRUCTURAL", "AUXILIARY", "ABSTRACT", "NAME"});
  tokens->push_back(keyword);
  if (keyword == "NAME") {
    addNames(tokens);
  } else if (keyword == "DESC") {
    tokens->push_back("'x y'");
  } else if (keyword == "SUP" || keyword == "MUST" || keyword == "MAY") {
    addDollarList(tokens);
  }
}

void RandomTexts::addStorageClause(Tokens *tokens) {
  const std::string keyword =
      oneOf({"DBNAME", "DBNAME", "ACCESS-CLASS", "LENGTH", "EQUALITY",
             "ORDERING", "SUBSTR", "APPROX", "REVERSE"});
  tokens->push_back(keyword);
  if (keyword == "DBNAME") {
    addNames(tokens);
  } else if (keyword == "ACCESS-CLASS") {
    tokens->push_back(once(6) ? anyToken() : "normal");
  } else if (keyword == "LENGTH") {
    tokens->push_back(once(6) ? anyToken() : "256");
  }
}

void RandomTexts::addNames(Tokens *tokens) {
  if (once(3)) {
    tokens->push_back(name());
    return;
  }
  tokens->push_back("(");
  for (std::size_t count = below(4); count > 0; --count) {
    tokens->push_back(name());
  }
  tokens->push_back(")");
}

void RandomTexts::addDollarList(Tokens *tokens) {
  if (once(3)) {
    tokens->push_back(name());
    return;
  }
  add(tokens, {"(", name()});
  for (std::size_t count = below(4); count > 0; --count) {
    add(tokens, {"$", name()});
  }
  tokens->push_back(")");
}

std::string RandomTexts::oid() {
  return once(20) ? name()
                  : oneOf({"1", "2.5", "2.5.4.3", "2.5.4.10", "2.5.4.2", "1.1",
                           "1.2.3", "'CN'"});
}

std::string RandomTexts::name() {
  return oneOf({"'cn'", "'CN'", "cn", "'commonName'", "sn", "'2.5'", "top", "-",
                "'objectClasses'", "attributeTypes", "a_b", "''"});
}

std::string RandomTexts::anyToken() {
  return oneOf({"(",
                ")",
                "{",
                "}",
                "$",
                "=",
                ";",
                "_",
                "x",
                "-x",
                "'x'",
                "1.2",
                "1{2}",
                "1{",
                "1{2 ",
                "\xe9",
                "NAME",
                "DESC",
                "SUP",
                "AUXILIARY",
                "MUST",
                "MAY",
                "STRUCTURAL",
                "attributetypes",
                "objectclasses",
                "QORAttributetypes",
                "EQUALITY",
                "SYNTAX",
                "SINGLE-VALUE",
                "USAGE",
                "NO-USER-MODIFICATION",
                "ACCESS-CLASS",
                "DBNAME",
                "SUBSTR",
                "REVERSE",
                "ORDERING",
                "OBSOLETE",
                "ABSTRACT",
                "LENGTH",
                "APPROX",
                "'NAME'",
                "'X-ORIGIN'"});
}

void RandomTexts::damage(Tokens *tokens) {
  for (std::size_t count = 1 + below(3); count > 0 && !tokens->empty();
       --count) {
    const auto place =
        tokens->begin() + static_cast<std::ptrdiff_t>(below(tokens->size()));
    switch (below(4)) {
      case 0:
        tokens->erase(place);
        break;
      case 1:
        *place = anyToken();
        break;
      case 2:
        tokens->insert(place, anyToken());
        break;
      default:
        tokens->insert(place, tokens->back());
        break;
    }
  }
}

std::string RandomTexts::laidOut(const Tokens &tokens) {
  const bool tight = once(3);
  std::string text;
  for (const std::string &token : tokens) {
    text += token;
    text += once(10) ? oneOf({"", "", "  ", "\n", "\n\n", "\t", " \t", "\r\n",
                              " # x\n", "#\n"})
            : tight && token.size() == 1 ? ""
                                         : " ";
  }
  return text;
}

void RandomTexts::damage(std::string *text) {
  for (std::size_t count = 1 + below(3); count > 0 && !text->empty(); --count) {
    const std::size_t place = below(text->size());
    switch (below(4)) {
      case 0:
        text->erase(place, 1);
        break;
      case 1:
        (*text)[place] = "'#(){} \n\t\r$=.-_1xA"[below(18)];
        break;
      case 2:
        (*text)[place] = static_cast<char>(below(256));
        break;
      default:
        text->erase(place);
        break;
    }
  }
}
