/* What the engine asks of the interception of imported functions; the scroll room implements it. */
#pragma once

/* Replaces the intercepted functions in the import tables of the process's modules. */
void InstallApiHooks();
/* Ends all scroll hosts of the process and gives every import table its own functions back. */
void UnInstallApiHooks();
