/* Numbers of the program's resources, shared by gallery.rc and the code. */
#pragma once

/* Not one of 1 to 16: the loader would apply such a manifest to the whole process by itself. */
#define RESOURCE_CONTROLS_6_MANIFEST 101

/* A ring of dots that goes round, for an animation control; in the colours of no skin. */
#define RESOURCE_SPINNER 102
