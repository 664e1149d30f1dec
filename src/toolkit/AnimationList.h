#pragma once

// The running animations of an animation thread, in order of starting. Thousands of
// tabs start and stop their animations in one layout pass, so adding, removing and
// finding one must not walk the list: outside a walk a removed animation leaves a
// hole that the next walk or a later start compacts away.

#include <cstddef>
#include <functional>
#include <unordered_map>
#include <vector>

namespace qx {

class TAnimation;

class TAnimationList {
 public:
  void Add(TAnimation* animation);
  void Remove(TAnimation* animation);
  std::size_t Count() const { return FSlots.size(); }
  bool Empty() const { return FSlots.empty(); }
  // Latest started first. A visit may remove animations: the walk then goes on one
  // place lower in the shortened list, pulled back to its end, so the visited one may
  // come again when earlier ones went. One added meanwhile waits for the next walk.
  void ForEachLatestFirst(const std::function<void(TAnimation*)>& visit);

 private:
  void Compact();

  std::vector<TAnimation*> FList;
  std::unordered_map<const TAnimation*, std::size_t> FSlots;
  int FWalking = 0;
  bool FChangedInWalk = false;
};

}  // namespace qx
