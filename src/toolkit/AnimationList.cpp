#include "toolkit/AnimationList.h"

#include <algorithm>

namespace qx {

void TAnimationList::Add(TAnimation* animation) {
  if (FSlots.contains(animation)) return;
  if (FWalking == 0 && FList.size() >= 2 * FSlots.size() + 16) Compact();
  FSlots.emplace(animation, FList.size());
  FList.push_back(animation);
  if (FWalking > 0) FChangedInWalk = true;
}

void TAnimationList::Remove(TAnimation* animation) {
  const auto slot = FSlots.find(animation);
  if (slot == FSlots.end()) return;
  const std::size_t place = slot->second;
  FSlots.erase(slot);
  if (FWalking > 0) {
    // A walk counts places in the dense list, so the list closes up at once.
    std::erase(FList, animation);
    FChangedInWalk = true;
    return;
  }
  FList[place] = nullptr;
  if (FSlots.empty()) FList.clear();
}

void TAnimationList::Compact() {
  std::erase(FList, nullptr);
  for (std::size_t i = 0; i < FList.size(); ++i) FSlots[FList[i]] = i;
}

void TAnimationList::ForEachLatestFirst(const std::function<void(TAnimation*)>& visit) {
  if (FWalking == 0) Compact();
  ++FWalking;
  auto last = [this] { return static_cast<std::ptrdiff_t>(FList.size()) - 1; };
  auto done = [this] {
    if (--FWalking == 0 && FChangedInWalk) {
      FChangedInWalk = false;
      Compact();
    }
  };
  try {
    for (std::ptrdiff_t i = last(); i >= 0;) {
      if (TAnimation* animation = FList[static_cast<std::size_t>(i)]) visit(animation);
      --i;
      if (i > last()) i = last();
    }
  } catch (...) {
    done();
    throw;
  }
  done();
}

}  // namespace qx
