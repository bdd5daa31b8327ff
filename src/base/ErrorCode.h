#ifndef ERRORCODE_H
#define ERRORCODE_H

/*! Kinds of error that a report can carry. */
namespace ErrorCode {
enum Type : int { None = 0 };
}

#endif
