#pragma once

#include "listfile.h"

/// The same list as a regular file, which can be read more than once: what is none, such as a pipe, is copied, but no
/// further than the limit on inputs. Throws TallyException.
ListFile asRegularFile(const ListFile& file);
