#pragma once

// Host tab groups, sections and managers as wraps; the filtered forms leave out the
// tabs the dock hides and are snapshots taken at construction.

#include "host/WrapV3Intf.h"

namespace qx {

enum class TTabManagerWrapKind { Plain, Filtered, FilteredEx };

ComPtr<IQxITabManagerWrap> MakeTabManagerWrap(IQxITabManager* manager, TTabManagerWrapKind kind);
ComPtr<IQxITabGroupWrap> MakeTabGroupWrap(IQxITabGroup* group, IQxITabManager* manager, TTabManagerWrapKind kind);
ComPtr<IQxITabSectionWrap> MakeTabSectionWrap(IQxITabSection* section, IQxITabManager* manager, bool filtered);

}  // namespace qx
