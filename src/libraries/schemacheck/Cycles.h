// Ways that lead back to where they began.
#ifndef SCHEMACHECK_CYCLES_H_
#define SCHEMACHECK_CYCLES_H_

#include <cstddef>
#include <vector>

namespace schemacheck {

// The nodes to which each node leads, by their numbers from 0.
using Graph = std::vector<std::vector<std::size_t>>;

// A cycle for each set of nodes that all lead to each other, the shortest
// through the node with the lowest number: the nodes in the order in which they
// are passed, from that one on. The cycles are in the order of their first
// nodes.
//
// Takes time linear in the size of the graph, and no deeper stack for longer
// ways.
std::vector<std::vector<std::size_t>> findCycles(const Graph &graph);

}  // namespace schemacheck

#endif  // SCHEMACHECK_CYCLES_H_
