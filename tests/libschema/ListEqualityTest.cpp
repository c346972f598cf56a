// The comparison of lists, in each field that holds one.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "Attribute.h"
#include "DefinitionTesting.h"
#include "ObjectClass.h"
#include "QORAttribute.h"

using definitions::compare;
using definitions::parsed;

namespace {

using List = std::vector<std::string>;

// A definition that differs from another one in one list alone.
class WithList {
 public:
  virtual ~WithList() = default;
  // The result of the comparison of this one with `other`.
  virtual int equals(const WithList &other) = 0;
};

template <class Definition>
class DefinitionWithList : public WithList {
 public:
  explicit DefinitionWithList(const std::string &text)
      : m_definition(parsed<Definition>(text)) {}
  int equals(const WithList &other) override {
    return compare(m_definition,
                   static_cast<const DefinitionWithList &>(other).m_definition);
  }

 private:
  Definition m_definition;
};

template <class Definition>
std::unique_ptr<WithList> make(const std::string &text) {
  return std::make_unique<DefinitionWithList<Definition>>(text);
}

std::string quoted(const List &list, const std::string &separator) {
  std::string text;
  for (const std::string &element : list) {
    text += text.empty() ? "" : separator;
    text += "'" + element + "'";
  }
  return text;
}

struct Field {
  const char *name;
  std::unique_ptr<WithList> (*with)(const List &list);
};

std::ostream &operator<<(std::ostream &out, const Field &field) {
  return out << field.name;
}

const Field kFields[] = {
    {"AttributeNames",
     [](const List &list) {
       return make<Attribute>("attributetypes=( 1 NAME ( " + quoted(list, " ") +
                              " ) USAGE x )");
     }},
    {"ObjectClassNames",
     [](const List &list) {
       return make<ObjectClass>("objectclasses=( 1 NAME ( " +
                                quoted(list, " ") + " ) ABSTRACT )");
     }},
    {"ObjectClassSuperiors",
     [](const List &list) {
       return make<ObjectClass>("objectclasses=( 1 SUP ( " +
                                quoted(list, " $ ") + " ) )");
     }},
    {"ObjectClassRequired",
     [](const List &list) {
       return make<ObjectClass>("objectclasses=( 1 MUST ( " +
                                quoted(list, " $ ") + " ) )");
     }},
    {"ObjectClassOptional",
     [](const List &list) {
       return make<ObjectClass>("objectclasses=( 1 MAY ( " +
                                quoted(list, " $ ") + " ) )");
     }},
    {"Columns",
     [](const List &list) {
       return make<QORAttribute>("QORAttributetypes=( 1 DBNAME ( " +
                                 quoted(list, " ") + " ) )");
     }},
    // These are numbers: each element by the codes of its characters.
    {"AttributeSuperiors", [](const List &list) {
       std::string text = "attributetypes=( 1 ";
       for (const std::string &element : list) {
         text += "SUP 2";
         for (const char letter : Attribute().convert(element)) {
           text += "." + std::to_string(static_cast<int>(letter));
         }
         text += ' ';
       }
       return make<Attribute>(text + ")");
     }}};

class ListEqualityTest : public testing::TestWithParam<Field> {
 protected:
  static int compareLists(const List &mine, const List &theirs) {
    return GetParam().with(mine)->equals(*GetParam().with(theirs));
  }
};

INSTANTIATE_TEST_SUITE_P(EachField, ListEqualityTest,
                         testing::ValuesIn(kFields),
                         [](const testing::TestParamInfo<Field> &field) {
                           return field.param.name;
                         });

// `list` with each element in upper case and the order turned round.
List otherWay(List list) {
  for (std::string &element : list) {
    std::transform(element.begin(), element.end(), element.begin(), [](char c) {
      return static_cast<char>(c >= 'a' && c <= 'z' ? c - 32 : c);
    });
  }
  std::reverse(list.begin(), list.end());
  return list;
}

// `count` different elements.
List elements(std::size_t count) {
  List list;
  for (std::size_t i = 0; i < count; ++i) {
    list.push_back("element-" + std::to_string(i) + "x");
  }
  return list;
}

TEST_P(ListEqualityTest, IsContainmentOfListsOfOneLength) {
  const struct {
    List mine, theirs;
    int equal, equalTheOtherWay;
  } kTable[] = {
      {{}, {}, 1, 1},
      {{"a"}, {}, 0, 0},
      {{"a"}, {"a"}, 1, 1},
      {{"a"}, {"A"}, 1, 1},
      {{"a"}, {"b"}, 0, 0},
      {{"cn"}, {"cnx"}, 0, 0},
      {{"cn"}, {"c"}, 0, 0},
      {{"cn"}, {"sn"}, 0, 0},
      {{"cn"}, {"cn", "commonName"}, 0, 0},
      {{"cn", "commonName"}, {"COMMONNAME", "CN"}, 1, 1},
      {{"a", "b", "c"}, {"c", "a", "b"}, 1, 1},
      {{"a", "b", "c"}, {"a", "b", "d"}, 0, 0},
      {{"a", "b", "c"}, {"a", "d", "c"}, 0, 0},
      {{"a", "b", "c"}, {"d", "b", "c"}, 0, 0},
      // One-sided.
      {{"a", "a"}, {"a", "b"}, 1, 0},
      {{"A", "a"}, {"a", "b"}, 1, 0},
      {{"a", "A"}, {"b", "A"}, 1, 0},
      {{"A", "a"}, {"a", "A"}, 1, 1},
      {{"a", "a", "b"}, {"a", "b", "b"}, 1, 1},
      {{"a", "a", "a"}, {"c", "b", "a"}, 1, 0},
      {{"a", "a", "c"}, {"c", "b", "a"}, 1, 0},
      {{"a", "a", "d"}, {"c", "b", "a"}, 0, 0},
  };
  for (const auto &row : kTable) {
    SCOPED_TRACE(quoted(row.mine, " ") + " and " + quoted(row.theirs, " "));
    EXPECT_EQ(compareLists(row.mine, row.theirs), row.equal);
    EXPECT_EQ(compareLists(row.theirs, row.mine), row.equalTheOtherWay);
  }
}

TEST_P(ListEqualityTest, CaseIsThatOfLettersAlone) {
  EXPECT_EQ(compareLists({"a[z-1.2"}, {"A[Z-1.2"}), 1);
  EXPECT_EQ(compareLists({"a[z"}, {"a{z"}), 0);
  EXPECT_EQ(compareLists({"a@z"}, {"a`z"}), 0);
  EXPECT_EQ(compareLists({"a_z"}, {"a-z"}), 0);
  EXPECT_EQ(compareLists({"az "}, {"az"}), 0);
}

TEST_P(ListEqualityTest, HoldsForLongLists) {
  for (const std::size_t count : {15U, 16U, 17U, 18U, 33U, 200U}) {
    SCOPED_TRACE(count);
    const List list = elements(count);
    EXPECT_EQ(compareLists(list, list), 1);
    EXPECT_EQ(compareLists(list, otherWay(list)), 1);
    EXPECT_EQ(compareLists(otherWay(list), list), 1);
    EXPECT_EQ(compareLists(list, elements(count - 1)), 0);
    EXPECT_EQ(compareLists(list, elements(count + 1)), 0);
    for (const std::size_t place : {std::size_t{0}, count / 2, count - 1}) {
      SCOPED_TRACE(place);
      List changed = list;
      changed[place] = "element-0";
      EXPECT_EQ(compareLists(list, otherWay(changed)), 0);
      EXPECT_EQ(compareLists(otherWay(changed), list), 0);
      // One-sided: the element that was there is there no more, but what is
      // there instead is in the other list too.
      changed[place] = list[(place + 1) % count];
      EXPECT_EQ(compareLists(otherWay(changed), list), 1);
      EXPECT_EQ(compareLists(list, otherWay(changed)), 0);
    }
    EXPECT_EQ(compareLists(List(count, "ELEMENT-0x"), list), 1);
    EXPECT_EQ(compareLists(list, List(count, "element-0x")), 0);
  }
}

// The rule, written down once more.
bool contained(const List &mine, const List &theirs) {
  Attribute any;
  for (const std::string &a : mine) {
    bool found = false;
    for (const std::string &b : theirs) {
      found = found || any.convert(a) == any.convert(b);
    }
    if (!found) {
      return false;
    }
  }
  return mine.size() == theirs.size();
}

// All lists of up to three elements out of three, alone and behind as many
// others as make the lists long ones.
TEST_P(ListEqualityTest, HoldsForAllSmallLists) {
  std::vector<List> tails = {{}};
  for (std::size_t i = 0; tails[i].size() < 3; ++i) {
    for (const char *element : {"a", "A", "b"}) {
      tails.push_back(tails[i]);
      tails.back().emplace_back(element);
    }
  }
  ASSERT_EQ(tails.size(), 40U);
  for (const std::size_t others : {0U, 15U}) {
    std::vector<List> lists;
    std::vector<std::unique_ptr<WithList>> definitions;
    for (const List &tail : tails) {
      List list = elements(others);
      list.insert(list.end(), tail.begin(), tail.end());
      definitions.push_back(GetParam().with(list));
      lists.push_back(std::move(list));
    }
    for (std::size_t mine = 0; mine < lists.size(); ++mine) {
      for (std::size_t theirs = 0; theirs < lists.size(); ++theirs) {
        EXPECT_EQ(definitions[mine]->equals(*definitions[theirs]) == 1,
                  contained(lists[mine], lists[theirs]))
            << quoted(lists[mine], " ") << " and "
            << quoted(lists[theirs], " ");
      }
    }
  }
}

}  // namespace
