// interrupt.h: Ctrl-C and a plain kill as something to ask for, so that long work can end well.
#ifndef ZVPLAYLIST_INTERRUPT_H
#define ZVPLAYLIST_INTERRUPT_H

namespace zvplaylist {

// From here on SIGINT and SIGTERM are noted. A second one ends the program at once.
void note_interrupts();

// The signal that was noted, or 0.
int interrupted_by();

}  // namespace zvplaylist

#endif
