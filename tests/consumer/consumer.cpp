#include <cstdlib>

#include "qenzor/qen/qen.h"

int main() {
  qenzor::CQen document;
  return document.ReadFile("no-such-file.qen") ? EXIT_FAILURE : EXIT_SUCCESS;
}
