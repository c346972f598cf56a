/// @file
/// The server's trace facility: the calls that traced code makes, and the sink
/// in which a program receives the records. A server that has a facility of its
/// own links that one in place of this module.
#ifndef PLATFORM_LDTR_H_
#define PLATFORM_LDTR_H_

/// The event mask. Traced code tests its bits before it calls anything below;
/// the facility itself does not. Set it before other threads run traced code.
extern unsigned int trcEvents;

/// Writes an entry record of the function `id`. `kind` says which class of
/// events it belongs to. `data` is handed on to the sink and may be null.
void ldtr_write(unsigned int kind, unsigned int id, void *data);

/// Writes an exit record of the function `id`: `kind` and `event` say which
/// class of events it belongs to, `code` is the function's result. `data` is
/// handed on to the sink and may be null.
void ldtr_exit_errcode(unsigned int id, int kind, unsigned int event, long code,
                       void *data);

/// A debug record in the making. Meant to live for one statement.
class ldtr_formater_local {
 public:
  /// `id` is the function that speaks, `kind` the kind of the record. `data` is
  /// handed on to the sink and may be null; it is not owned.
  ldtr_formater_local(unsigned int id, unsigned int kind, void *data);

  /// Formats as printf does and writes the record. `level` is handed on to the
  /// sink. A text of any length comes out whole. Throws std::bad_alloc where a
  /// long text finds no memory.
  void debug(unsigned int level, const char *format, ...)
      __attribute__((format(printf, 3, 4)));

 private:
  unsigned int m_id;
  unsigned int m_kind;
  void *m_data;
};

/// What the sink receives.
struct ldtr_record {
  /// The kinds of records.
  enum class Type { kEntry, kExit, kDebug };

  Type type;           ///< who wrote it: ldtr_write() and so on
  unsigned int kind;   ///< as given by the traced code
  unsigned int id;     ///< the function
  unsigned int event;  ///< exit records; 0 in others
  long code;           ///< exit records; 0 in others
  unsigned int level;  ///< debug records; 0 in others
  const char *text;    ///< debug records: the finished text; "" in others.
                       ///< Valid until the sink returns.
  void *data;          ///< as given by the traced code
};

/// Receives one record; `context` is the pointer given to ldtr_set_sink. Must
/// not throw.
using ldtr_sink = void (*)(const ldtr_record &record, void *context);

/// Sets the sink for all threads; null drops the records, as at the start. The
/// sink is called by the thread that wrote the record, by one thread at a time,
/// so that records arrive whole, each thread's in the order in which it wrote
/// them. The sink may itself write records and set the sink, but must not wait
/// for another thread that writes records. When the call returns, no thread is
/// in the former sink any more, except the calling one if it calls from there.
/// `context` is not owned.
void ldtr_set_sink(ldtr_sink function, void *context);

#endif  // PLATFORM_LDTR_H_
