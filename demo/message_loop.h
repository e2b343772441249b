/* The program's one way of running messages, with the keys of its modeless dialogs. */
#pragma once

#include <windows.h>

#include <functional>

namespace gallery {

/* Sees each message before it is handed on; true if that is all that happens to it. */
using Translator = std::function<bool(MSG& message)>;
/* The one translator of the program; null for none. */
void set_translator(Translator translator);

/* Hands a message on: to the dialog it belongs to, if that takes it as navigation, or to its window. */
void dispatch(MSG& message);

/* Runs messages for `milliseconds`, and then for as long as painting is outstanding. Throws Failure if the
   windows never stop painting. */
void settle(DWORD milliseconds);

}  // namespace gallery
