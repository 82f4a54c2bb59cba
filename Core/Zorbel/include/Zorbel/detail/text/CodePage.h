#pragma once

#include <Zorbel/Export.h>

/// `Zorbel::detail::CodePage`, the thread's ANSI code page: the system's own, or a fixed one where it has none.
#include ZORBEL_CODE_PAGE_HEADER
