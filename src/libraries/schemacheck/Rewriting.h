// What the library reads back of what it writes.
#ifndef SCHEMACHECK_REWRITING_H_
#define SCHEMACHECK_REWRITING_H_

#include <vector>

#include "Fields.h"
#include "SchemaFiles.h"

namespace schemacheck {

// Whether a definition that the library holds, with these fields, is sure to
// read back as it is written: its values have the form that values of their
// fields usually have, and none is a keyword. Others may read back, too.
bool isPlain(Kind kind, const std::vector<FieldView> &fields);

}  // namespace schemacheck

#endif  // SCHEMACHECK_REWRITING_H_
