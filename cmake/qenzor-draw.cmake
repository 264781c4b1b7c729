# The component draw of the package qenzor: qenzor::draw, the library that makes pictures, where it was
# built.

if(TARGET qenzor::draw)
  set(qenzor_draw_FOUND TRUE)
else()
  set(qenzor_NOT_FOUND_MESSAGE "qenzor was built without pictures (QENZOR_DRAW)")
endif()
