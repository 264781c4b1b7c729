# The component html of the package qenzor: qenzor::html, the library that makes web pages, where it
# was built.

if(TARGET qenzor::html)
  set(qenzor_html_FOUND TRUE)
else()
  set(qenzor_NOT_FOUND_MESSAGE "qenzor was built without web pages (QENZOR_HTML)")
endif()
