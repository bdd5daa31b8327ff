#ifndef COMPLETION_H
#define COMPLETION_H

class QString;

/*! Scripts that let a shell complete the program's command lines, made from the table. */
namespace Completion {
QString bash();
QString zsh();
} // namespace Completion

#endif
