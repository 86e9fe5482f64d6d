#pragma once

#include "page_base/table_page.h"

/// The pages for the attributes of one type of controls each. Their target is a SelectedControls of that type.
std::span<const tarn::PageEntry> type_pages();

/// The type of controls that a page of type_pages() is for.
int type_of(const tarn::PageEntry& page);
