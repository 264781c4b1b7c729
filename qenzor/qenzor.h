#pragma once

// All of the library that works on documents, for programs that do not mind compiling it: reading
// and saving, every data class, walks, finding and making places, views.

#include "qenzor/catalogue.h"
#include "qenzor/platform/code_page.h"
#include "qenzor/qen/builder.h"
#include "qenzor/qen/walk.h"
#include "qenzor/qen_document.h"
#include "qenzor/storable.h"
#include "qenzor/view/objects.h"
#include "qenzor/view/style_book.h"
#include "qenzor/view/walk.h"
#include "qenzor/visit.h"
#include "qenzor/zor/walk.h"
#include "qenzor/zor_document.h"
