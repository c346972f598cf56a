#include "internal/KeptDefinitions.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <utility>

#include "Attribute.h"

namespace {

using libschema::KeptDefinitions;

// A definition that shows whether it exists.
class Counted : public Attribute {
 public:
  explicit Counted(int *count) : m_count(count) { ++*m_count; }
  ~Counted() override { --*m_count; }

  Counted(const Counted &) = delete;
  Counted &operator=(const Counted &) = delete;

 private:
  int *const m_count;
};

class KeptDefinitionsTest : public testing::Test {
 protected:
  // A definition that is nobody's. There are `m_count` of them.
  Counted *make() { return new Counted(&m_count); }

  int m_count = 0;
  KeptDefinitions m_kept;
  KeptDefinitions m_other;
};

TEST_F(KeptDefinitionsTest, KeepsNothingAtFirst) {
  Attribute definition;
  EXPECT_FALSE(m_kept.contains(&definition));
  EXPECT_FALSE(m_kept.drop(&definition));
}

TEST_F(KeptDefinitionsTest, ReleasesWhatIsDropped) {
  Counted *const definition = make();
  m_kept.keep(definition);
  EXPECT_TRUE(m_kept.contains(definition));
  EXPECT_EQ(m_count, 1);
  EXPECT_TRUE(m_kept.drop(definition));
  EXPECT_EQ(m_count, 0);
  EXPECT_FALSE(m_kept.contains(definition));
  EXPECT_FALSE(m_kept.drop(definition));
}

TEST_F(KeptDefinitionsTest, ReleasesAllWhenDestroyed) {
  std::optional<KeptDefinitions> kept(std::in_place);
  for (int i = 0; i < 3; ++i) {
    kept->keep(make());
  }
  EXPECT_EQ(m_count, 3);
  kept.reset();
  EXPECT_EQ(m_count, 0);
}

TEST_F(KeptDefinitionsTest, DropsOneOfMany) {
  Counted *const first = make();
  Counted *const second = make();
  m_kept.keep(first);
  m_kept.keep(second);
  EXPECT_TRUE(m_kept.drop(first));
  EXPECT_EQ(m_count, 1);
  EXPECT_TRUE(m_kept.contains(second));
}

TEST_F(KeptDefinitionsTest, KeepingTwiceIsKeepingOnce) {
  Counted *const definition = make();
  m_kept.keep(definition);
  m_kept.keep(definition);
  EXPECT_TRUE(m_kept.drop(definition));
  EXPECT_EQ(m_count, 0);
}

TEST_F(KeptDefinitionsTest, DoesNotOwnWhatItWasNotGiven) {
  const std::unique_ptr<Counted> mine(make());
  EXPECT_FALSE(m_kept.drop(mine.get()));
  m_kept.takeOver(mine.get(), &m_other);
  EXPECT_FALSE(m_kept.contains(mine.get()));
  EXPECT_EQ(m_count, 1);
}

TEST_F(KeptDefinitionsTest, WhatIsSharedGoesWithTheLast) {
  for (const bool thisFirst : {true, false}) {
    for (const bool keptBefore : {true, false}) {
      Counted *const definition = make();
      if (keptBefore) {
        m_other.keep(definition);
      }
      m_kept.share(definition, &m_other);
      EXPECT_TRUE(m_kept.contains(definition));
      EXPECT_TRUE(m_other.contains(definition));
      EXPECT_TRUE((thisFirst ? m_kept : m_other).drop(definition));
      EXPECT_EQ(m_count, 1);
      EXPECT_TRUE((thisFirst ? m_other : m_kept).drop(definition));
      EXPECT_EQ(m_count, 0);
    }
  }
}

TEST_F(KeptDefinitionsTest, SharingTwiceIsSharingOnce) {
  Counted *const definition = make();
  m_kept.share(definition, &m_other);
  m_kept.share(definition, &m_other);
  m_other.share(definition, &m_kept);
  EXPECT_TRUE(m_other.drop(definition));
  EXPECT_EQ(m_count, 1);
  EXPECT_TRUE(m_kept.drop(definition));
  EXPECT_EQ(m_count, 0);
}

TEST_F(KeptDefinitionsTest, ManyShareOneDefinition) {
  Counted *const definition = make();
  {
    KeptDefinitions third;
    m_kept.share(definition, &m_other);
    third.share(definition, &m_kept);
    EXPECT_TRUE(m_other.drop(definition));
    EXPECT_TRUE(m_kept.drop(definition));
    EXPECT_EQ(m_count, 1);
  }
  EXPECT_EQ(m_count, 0);
}

TEST_F(KeptDefinitionsTest, ATakenOverDefinitionStays) {
  Counted *const definition = make();
  m_other.keep(definition);
  m_kept.takeOver(definition, &m_other);
  EXPECT_FALSE(m_other.contains(definition));
  EXPECT_TRUE(m_kept.contains(definition));
  EXPECT_EQ(m_count, 1);
  EXPECT_TRUE(m_kept.drop(definition));
  EXPECT_EQ(m_count, 0);
}

TEST_F(KeptDefinitionsTest, OneThatSharesTakesOver) {
  Counted *const definition = make();
  m_kept.share(definition, &m_other);
  m_kept.takeOver(definition, &m_other);
  EXPECT_FALSE(m_other.contains(definition));
  EXPECT_TRUE(m_kept.contains(definition));
  EXPECT_EQ(m_count, 1);
  EXPECT_TRUE(m_kept.drop(definition));
  EXPECT_EQ(m_count, 0);
}

TEST_F(KeptDefinitionsTest, AThirdTakesOverAPartOfTheSharing) {
  Counted *const definition = make();
  KeptDefinitions third;
  m_kept.share(definition, &m_other);
  third.takeOver(definition, &m_other);
  EXPECT_TRUE(m_kept.drop(definition));
  EXPECT_EQ(m_count, 1);
  EXPECT_TRUE(third.drop(definition));
  EXPECT_EQ(m_count, 0);
}

}  // namespace
