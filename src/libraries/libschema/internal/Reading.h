// The reading of a schema file.
#ifndef LIBSCHEMA_INTERNAL_READING_H_
#define LIBSCHEMA_INTERNAL_READING_H_

#include <memory>
#include <utility>

#include "SchemaLexan.h"
#include "SchemaManager.h"
#include "internal/Kinds.h"

// The reading of the file that a manager's analyser stands at the start of.
class SchemaManager::Reading {
 public:
  // The OIDs are recorded in `oids`, or nowhere if that is null.
  Reading(SchemaManager *schema, OidSet *oids)
      : m_lexan(schema->m_lexan),
        m_oids(oids),
        m_attributes(schema),
        m_objectClasses(schema),
        m_storage(schema) {}

  // file = *( section / other )
  // False: parse error.
  bool run() {
    int token = m_lexan->lexan();
    while (token != TOK_DONE) {
      if (!beginsSection(token)) {
        token = m_lexan->lexan();
      } else if (readSection(token)) {
        token = m_lexan->getCurrentToken();
      } else {
        return false;
      }
    }
    return m_lexan->lexan() == TOK_DONE;  // the end of the file stays the end
  }

 private:
  // Files values under keys in a map or a set. A file that the library has
  // written has the keys in ascending order: each then belongs right behind the
  // one before it, and is not searched for. Without a container, nothing is
  // filed.
  template <class Container>
  class Filing {
   public:
    explicit Filing(Container *container) : m_container(container) {
      if (container != nullptr) {
        m_last = container->end();
      }
    }

    // A key that is taken keeps its value.
    template <class... Value>
    void add(Value &&...value) {
      if (m_container != nullptr) {
        m_last =
            m_container->emplace_hint(m_last, std::forward<Value>(value)...);
      }
    }

   private:
    Container *const m_container;
    typename Container::iterator m_last;  // what was added last, or the end
  };

  template <class Kind>
  struct Tables {
    explicit Tables(SchemaManager *schema)
        : owning(&Kind::owning(schema)), byOid(Kind::byOid(schema)) {}

    Filing<Table<typename Kind::Definition>> owning;
    Filing<Table<typename Kind::Definition>> byOid;
  };

  static bool beginsSection(int token) {
    return token == TOK_ATTRIBUTETYPES || token == TOK_OBJECTCLASSES ||
           token == TOK_QORATTRIBUTETYPES;
  }

  // section = keyword ( "=" definition / "{" 1*definition "}" )
  // The "}" stays the current token.
  bool readSection(int keyword) {
    const int opener = m_lexan->lexan();
    if (opener == '=') {
      return readDefinition(keyword, false);
    }
    if (opener != '{') {
      return false;
    }
    do {
      if (!readDefinition(keyword, true)) {
        return false;
      }
    } while (m_lexan->getCurrentToken() != '}');
    return true;
  }

  bool readDefinition(int keyword, bool inBraces) {
    switch (keyword) {
      case TOK_ATTRIBUTETYPES:
        return readDefinition(&m_attributes, inBraces);
      case TOK_OBJECTCLASSES:
        return readDefinition(&m_objectClasses, inBraces);
      default:
        return readDefinition(&m_storage, inBraces);
    }
  }

  template <class Kind>
  bool readDefinition(Tables<Kind> *tables, bool inBraces) {
    auto parsed = std::make_unique<typename Kind::Definition>();
    const bool complete = parsed->parse(m_lexan) != 0;
    auto *definition = parsed.get();
    if (!complete || (inBraces && definition->oid().empty())) {
      static_cast<void>(parsed.release());  // kept on purpose: never freed
      return complete;
    }
    tables->owning.add(Kind::key(definition), definition);
    // The table's now, or, kept on purpose, nobody's if its key was taken.
    static_cast<void>(parsed.release());
    tables->byOid.add(definition->oid(), definition);
    m_oids.add(definition->oid());
    return true;
  }

  SchemaLexan *const m_lexan;
  Filing<OidSet> m_oids;
  Tables<AttributeKind> m_attributes;
  Tables<ObjectClassKind> m_objectClasses;
  Tables<StorageKind> m_storage;
};

#endif  // LIBSCHEMA_INTERNAL_READING_H_
