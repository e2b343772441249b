/* The root of all skin objects. Its header is a public one, as CSkinMenuBar holds skin objects by value. */
#pragma once

#include "tavixskin/skin_wnd_base.h"
