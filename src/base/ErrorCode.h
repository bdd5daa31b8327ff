#ifndef ERRORCODE_H
#define ERRORCODE_H

/*! Kinds of error that a report can carry. */
namespace ErrorCode {
/*! The kinds; the library itself reports None alone. */
enum Type : int { None = 0 };
} // namespace ErrorCode

#endif
