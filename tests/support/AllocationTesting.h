// What tests of allocation failures share; for programs that link
// FailingAllocation.cpp.
#ifndef TESTS_SUPPORT_ALLOCATIONTESTING_H_
#define TESTS_SUPPORT_ALLOCATIONTESTING_H_

#include <gtest/gtest.h>

#include <cstddef>
#include <exception>
#include <iostream>
#include <streambuf>
#include <type_traits>

#include "ldtr.h"
#include "support/FailingAllocation.h"

// While it exists, trcEvents is `mask`, and the trace records of calls are
// followed, without an allocation.
class Calls {
 public:
  explicit Calls(unsigned int mask) {
    ldtr_set_sink(&Calls::receive, this);
    trcEvents = mask;
  }
  ~Calls() {
    trcEvents = 0;
    ldtr_set_sink(nullptr, nullptr);
  }

  Calls(const Calls &) = delete;
  Calls &operator=(const Calls &) = delete;

  // Whether each call that was entered was left, the inner ones first.
  bool balanced() const { return m_balanced && m_depth == 0; }
  // How many an exception passed, and whether they had the code 0.
  std::size_t passed() const { return m_passed; }
  bool passedWithoutResult() const { return m_passedWithoutResult; }

 private:
  static void receive(const ldtr_record &record, void *context) {
    static_cast<Calls *>(context)->receive(record);
  }

  void receive(const ldtr_record &record) {
    if (record.type == ldtr_record::Type::kEntry) {
      m_ids[m_depth++] = record.id;
    } else if (record.type == ldtr_record::Type::kExit) {
      m_balanced = m_balanced && m_depth > 0 && m_ids[--m_depth] == record.id;
      if (std::uncaught_exceptions() > 0) {
        ++m_passed;
        m_passedWithoutResult = m_passedWithoutResult && record.code == 0;
      }
    }
  }

  unsigned int m_ids[16] = {};
  std::size_t m_depth = 0;
  std::size_t m_passed = 0;
  bool m_balanced = true;
  bool m_passedWithoutResult = true;
};

// While it exists, what is printed to standard output is counted and dropped,
// without an allocation: a stream would let no exception of its buffer pass.
class CountedOutput : public std::streambuf {
 public:
  CountedOutput() : m_output(std::cout.rdbuf(this)) {}
  ~CountedOutput() override { std::cout.rdbuf(m_output); }

  CountedOutput(const CountedOutput &) = delete;
  CountedOutput &operator=(const CountedOutput &) = delete;

  std::size_t size() const { return m_size; }

 private:
  int_type overflow(int_type c) override {
    ++m_size;
    return traits_type::not_eof(c);
  }

  std::size_t m_size = 0;
  std::streambuf *m_output;
};

// Lets each allocation fail that `operation` makes on what `make` has made: the
// n-th for each n up to a call that is not disturbed any more, alone and with
// all after it, untraced and traced. Expects each time
//  - std::bad_alloc, or the outcome of an undisturbed call, which is what
//    `outcome` tells of the subject and the operation's result;
//  - exit records of all calls with entry records, those that the exception
//    passed with the code 0;
//  - the outcome of an undisturbed call of a second one after the exception,
//    which every other time is left out;
//  - that nothing is left when the subject is gone.
// Returns how many allocations an untraced call makes.
template <class Make, class Operation, class Outcome>
std::size_t failEachAllocation(const Make &make, const Operation &operation,
                               const Outcome &outcome) {
  using Result = std::decay_t<decltype(operation(*make()))>;
  const auto expected = [&] {
    auto subject = make();
    const Result result = operation(*subject);
    return outcome(*subject, result);
  }();
  std::size_t allocations = 0;
  for (unsigned int variant = 0; variant < 8; ++variant) {
    const bool lasting = (variant & 1U) != 0;
    const bool repeated = (variant & 2U) != 0;
    const unsigned int mask = (variant & 4U) != 0 ? ~0U : 0;
    bool failed = true;
    for (std::size_t n = 1; failed && !testing::Test::HasFailure(); ++n) {
      SCOPED_TRACE(testing::Message()
                   << "variant " << variant << ", n = " << n);
      const std::size_t blocks = allBlocks();
      {
        auto subject = make();
        Result result{};
        bool thrown = false;
        {
          const Calls calls(mask);
          failed = failsAt(
              n, lasting, [&] { result = operation(*subject); }, &thrown);
          EXPECT_TRUE(calls.balanced());
          EXPECT_TRUE(calls.passedWithoutResult());
        }
        if (thrown && repeated) {
          result = operation(*subject);
        }
        if (!thrown || repeated) {
          EXPECT_EQ(outcome(*subject, result), expected);
        }
      }
      EXPECT_EQ(allBlocks(), blocks);
      allocations += variant == 0 && failed ? 1 : 0;
    }
  }
  return allocations;
}

// The same where the outcome is the result.
template <class Make, class Operation>
std::size_t failEachAllocation(const Make &make, const Operation &operation) {
  return failEachAllocation(
      make, operation,
      [](const auto & /*subject*/, const auto &result) { return result; });
}

#endif  // TESTS_SUPPORT_ALLOCATIONTESTING_H_
