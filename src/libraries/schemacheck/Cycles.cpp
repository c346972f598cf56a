#include "Cycles.h"

#include <algorithm>
#include <utility>

namespace schemacheck {

namespace {

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

// Tarjan's algorithm, with a stack of its own.
class Components {
 public:
  explicit Components(const Graph &graph)
      : m_graph(graph),
        m_order(graph.size(), kNone),
        m_low(graph.size(), kNone),
        m_component(graph.size(), kNone) {
    for (std::size_t node = 0; node < graph.size(); ++node) {
      if (m_order[node] == kNone) {
        visit(node);
      }
    }
  }

  // The number of the component to which a node belongs.
  std::size_t of(std::size_t node) const { return m_component[node]; }
  std::size_t count() const { return m_count; }

 private:
  struct Step {
    std::size_t node;
    std::size_t next;  // the edge to be looked at
  };

  void enter(std::size_t node) {
    m_order[node] = m_low[node] = m_visited++;
    m_open.push_back(node);
    m_way.push_back({node, 0});
  }

  void visit(std::size_t root) {
    enter(root);
    while (!m_way.empty()) {
      const std::size_t node = m_way.back().node;
      if (m_way.back().next == m_graph[node].size()) {
        leave(node);
        continue;
      }
      const std::size_t to = m_graph[node][m_way.back().next++];
      if (m_order[to] == kNone) {
        enter(to);
      } else if (m_component[to] == kNone) {
        m_low[node] = std::min(m_low[node], m_order[to]);
      }
    }
  }

  void leave(std::size_t node) {
    m_way.pop_back();
    if (!m_way.empty()) {
      const std::size_t before = m_way.back().node;
      m_low[before] = std::min(m_low[before], m_low[node]);
    }
    if (m_low[node] != m_order[node]) {
      return;
    }
    std::size_t member = kNone;
    do {
      member = m_open.back();
      m_open.pop_back();
      m_component[member] = m_count;
    } while (member != node);
    ++m_count;
  }

  const Graph &m_graph;
  std::vector<std::size_t> m_order;  // when a node was entered
  std::vector<std::size_t> m_low;    // the earliest open one that it leads to
  std::vector<std::size_t> m_component;
  std::vector<std::size_t> m_open;  // entered, and of no component yet
  std::vector<Step> m_way;
  std::size_t m_visited = 0;
  std::size_t m_count = 0;
};

// The shortest way from a node back to it, within its component; empty if there
// is none. `cameFrom` holds kNone for all nodes of the component.
std::vector<std::size_t> wayBack(const Graph &graph,
                                 const Components &components,
                                 std::size_t start,
                                 std::vector<std::size_t> *cameFrom) {
  if (graph[start].empty()) {
    return {};
  }
  std::vector<std::size_t> ahead = {start};
  for (std::size_t i = 0; i < ahead.size(); ++i) {
    std::size_t node = ahead[i];
    for (const std::size_t to : graph[node]) {
      if (to == start) {
        std::vector<std::size_t> way = {node};
        for (; node != start; way.push_back(node)) {
          node = (*cameFrom)[node];
        }
        std::reverse(way.begin(), way.end());
        return way;
      }
      if (components.of(to) == components.of(start) &&
          (*cameFrom)[to] == kNone) {
        (*cameFrom)[to] = node;
        ahead.push_back(to);
      }
    }
  }
  return {};
}

}  // namespace

std::vector<std::vector<std::size_t>> findCycles(const Graph &graph) {
  const Components components(graph);
  std::vector<bool> seen(components.count(), false);
  std::vector<std::size_t> cameFrom(graph.size(), kNone);
  std::vector<std::vector<std::size_t>> cycles;
  for (std::size_t node = 0; node < graph.size(); ++node) {
    if (!seen[components.of(node)]) {
      seen[components.of(node)] = true;
      std::vector<std::size_t> way =
          wayBack(graph, components, node, &cameFrom);
      if (!way.empty()) {
        cycles.push_back(std::move(way));
      }
    }
  }
  return cycles;
}

}  // namespace schemacheck
