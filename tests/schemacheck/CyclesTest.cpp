#include "Cycles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <random>
#include <string>
#include <vector>

using schemacheck::findCycles;
using schemacheck::Graph;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

TEST(CyclesTest, ThereAreNoneWithoutAWayBack) {
  EXPECT_THAT(findCycles({}), IsEmpty());
  EXPECT_THAT(findCycles({{}}), IsEmpty());
  EXPECT_THAT(findCycles({{1, 2}, {2}, {}}), IsEmpty());
}

TEST(CyclesTest, EachIsFoundOnceFromItsLowestNode) {
  EXPECT_THAT(findCycles({{0}}), ElementsAre(ElementsAre(0)));
  EXPECT_THAT(findCycles({{1}, {0}}), ElementsAre(ElementsAre(0, 1)));
  EXPECT_THAT(findCycles({{2}, {2}, {3}, {1}}),
              ElementsAre(ElementsAre(1, 2, 3)));
  EXPECT_THAT(findCycles({{3}, {2}, {1}, {0}}),
              ElementsAre(ElementsAre(0, 3), ElementsAre(1, 2)));
}

TEST(CyclesTest, TheShortestIsTakenOfThoseThatMeet) {
  EXPECT_THAT(findCycles({{1, 2}, {2}, {0}}), ElementsAre(ElementsAre(0, 2)));
  EXPECT_THAT(findCycles({{1}, {0, 1}}), ElementsAre(ElementsAre(0, 1)));
}

// Whether `to` can be reached from `from` by one edge or more.
bool leadsTo(const Graph &graph, std::size_t from, std::size_t to) {
  std::vector<bool> seen(graph.size(), false);
  std::vector<std::size_t> ahead = graph[from];
  while (!ahead.empty()) {
    const std::size_t node = ahead.back();
    ahead.pop_back();
    if (!seen[node]) {
      seen[node] = true;
      ahead.insert(ahead.end(), graph[node].begin(), graph[node].end());
    }
  }
  return seen[to];
}

// Compares with the definition of a cycle.
void expectCycles(const Graph &graph) {
  std::vector<std::size_t> expected;  // the first nodes
  for (std::size_t node = 0; node < graph.size(); ++node) {
    bool isFirst = leadsTo(graph, node, node);
    for (std::size_t before = 0; before < node; ++before) {
      isFirst = isFirst &&
                !(leadsTo(graph, node, before) && leadsTo(graph, before, node));
    }
    if (isFirst) {
      expected.push_back(node);
    }
  }
  std::vector<std::size_t> found;
  for (const std::vector<std::size_t> &cycle : findCycles(graph)) {
    found.push_back(cycle.front());
    for (std::size_t i = 0; i < cycle.size(); ++i) {
      const auto &to = graph[cycle[i]];
      ASSERT_NE(std::find(to.begin(), to.end(), cycle[(i + 1) % cycle.size()]),
                to.end());
    }
  }
  ASSERT_EQ(found, expected);
}

// The graph in whose `edges` the bit node * nodes + to is set for each edge.
Graph graphOf(std::size_t nodes, unsigned long edges) {
  Graph graph(nodes);
  for (std::size_t edge = 0; edge < nodes * nodes; ++edge) {
    if ((edges >> edge & 1U) != 0) {
      graph[edge / nodes].push_back(edge % nodes);
    }
  }
  return graph;
}

TEST(CyclesTest, EverySmallGraphHasThoseThatItShould) {
  for (std::size_t nodes = 1; nodes <= 3; ++nodes) {
    for (unsigned long edges = 0; edges < 1UL << (nodes * nodes); ++edges) {
      SCOPED_TRACE(std::to_string(nodes) + " nodes, " + std::to_string(edges));
      expectCycles(graphOf(nodes, edges));
    }
  }
}

TEST(CyclesTest, RandomGraphsHaveThoseThatTheyShould) {
  std::mt19937_64 random(11);
  for (int i = 0; i < 500; ++i) {
    // Of the 36 edges about nine are there.
    const unsigned long edges = random() & random();
    SCOPED_TRACE(edges);
    expectCycles(graphOf(6, edges));
  }
}

TEST(CyclesTest, LongWaysNeedNoDeepStack) {
  constexpr std::size_t kNodes = 100'000;
  Graph graph(kNodes);
  for (std::size_t node = 0; node + 1 < kNodes; ++node) {
    graph[node].push_back(node + 1);
  }
  EXPECT_THAT(findCycles(graph), IsEmpty());
  graph.back().push_back(1);
  const auto cycles = findCycles(graph);
  ASSERT_EQ(cycles.size(), 1U);
  EXPECT_EQ(cycles[0].size(), kNodes - 1);
  EXPECT_EQ(cycles[0][0], 1U);
}

}  // namespace
