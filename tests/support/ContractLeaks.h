// Calls that leak because the library's contract says so. Each kind of leak has
// a function of its own, which the leak checker is told to pass over by name
// (tests/lsan.supp); no other leak is passed over.
#ifndef TESTS_SUPPORT_CONTRACTLEAKS_H_
#define TESTS_SUPPORT_CONTRACTLEAKS_H_

// The definitions of a file that are never freed: one that fails to parse, one
// without an OID in braces, and one whose keys are taken.
template <class Call>
__attribute__((noinline)) auto leaksDefinitions(const Call &call) {
  auto result = call();
  asm volatile("");  // no tail call: the function stays on the stack
  return result;
}

// The analyser of a file that is not read to its end.
template <class Call>
__attribute__((noinline)) auto leaksAnalyser(const Call &call) {
  auto result = call();
  asm volatile("");
  return result;
}

#endif  // TESTS_SUPPORT_CONTRACTLEAKS_H_
