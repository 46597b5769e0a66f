// One handler, which notes the signal.
#include "tools/interrupt.h"

#include <csignal>

namespace zvplaylist {
namespace {

volatile std::sig_atomic_t noted = 0;

}  // namespace

void note_interrupts() {
  struct sigaction noting {};
  noting.sa_handler = [](int signal) { noted = signal; };
  noting.sa_flags = static_cast<int>(SA_RESETHAND);
  sigaction(SIGINT, &noting, nullptr);
  sigaction(SIGTERM, &noting, nullptr);
}

int interrupted_by() {
  return noted;
}

}  // namespace zvplaylist
