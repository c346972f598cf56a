// Library calls that are not part of what the user asked for.
#ifndef SCHEMA_MIGRATE_UNTRACED_H_
#define SCHEMA_MIGRATE_UNTRACED_H_

#include "ldtr.h"

// While it exists, nothing is traced: a trace is to show the migration, and not
// the questions that the tool asks the library to check on it.
class Untraced {
 public:
  Untraced() : m_events(trcEvents) { trcEvents = 0; }
  ~Untraced() { trcEvents = m_events; }

  Untraced(const Untraced &) = delete;
  Untraced &operator=(const Untraced &) = delete;

 private:
  const unsigned int m_events;
};

#endif  // SCHEMA_MIGRATE_UNTRACED_H_
