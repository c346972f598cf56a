#include "Pool.h"

#include <gtest/gtest.h>

#include <numeric>
#include <utility>
#include <vector>

using schemacheck::Pool;
using schemacheck::PoolList;

namespace {

std::vector<int> numbers(std::size_t size) {
  std::vector<int> items(size);
  std::iota(items.begin(), items.end(), static_cast<int>(size));
  return items;
}

TEST(PoolTest, AnEmptyListNeedsNothing) {
  Pool<int> pool;
  std::vector<int> none;
  const PoolList<int> list = pool.take(&none);
  EXPECT_TRUE(list.empty());
  EXPECT_EQ(list.size(), 0U);
  EXPECT_EQ(list.begin(), list.end());
  EXPECT_TRUE(PoolList<int>().empty());
}

TEST(PoolTest, TakesTheItems) {
  Pool<int> pool;
  std::vector<int> items = {3, 4, 5};
  const PoolList<int> list = pool.take(&items);
  EXPECT_TRUE(items.empty());
  EXPECT_EQ(std::vector<int>(list.begin(), list.end()),
            (std::vector<int>{3, 4, 5}));
  EXPECT_FALSE(list.empty());
  EXPECT_EQ(list.front(), 3);
  EXPECT_EQ(list[1], 4);
  EXPECT_EQ(list.back(), 5);
}

// Lists of all lengths stay what they are while others come, and where they
// are when the pool is moved.
TEST(PoolTest, ListsStay) {
  Pool<int> pool;
  std::vector<PoolList<int>> lists;
  for (std::size_t size = 0; size < 5000; size += size / 100 + 1) {
    std::vector<int> items = numbers(size);
    lists.push_back(pool.take(&items));
    ASSERT_TRUE(items.empty());
    ASSERT_EQ(lists.back().size(), size);
  }
  const Pool<int> moved = std::move(pool);
  for (const PoolList<int> &list : lists) {
    ASSERT_EQ(std::vector<int>(list.begin(), list.end()), numbers(list.size()));
  }
}

}  // namespace
