#include "toolkit/FmxObject.h"

#include <algorithm>
#include <utility>

#include "base/Text.h"

namespace qx {

TFmxObject::TFmxObject(TFmxObject* owner) {
  if (owner) owner->InsertComponent(this);
}

TFmxObject::~TFmxObject() {
  FDestroying = true;
  NotifyWatchers();
  for (TFmxObject* watched : FWatching) std::erase(watched->FWatchers, static_cast<IFreeNotification*>(this));
  FWatching.clear();
  DeleteChildren();
  while (!FComponents.empty()) delete FComponents.back();
  if (FParent) FParent->RemoveObject(this);
  if (FOwner) FOwner->RemoveComponent(this);
}

void TFmxObject::NotifyWatchers() {
  // A watcher may add or remove watchers while told; take them one at a time.
  while (!FWatchers.empty()) {
    IFreeNotification* watcher = FWatchers.back();
    FWatchers.pop_back();
    if (auto* object = dynamic_cast<TFmxObject*>(watcher)) std::erase(object->FWatching, this);
    watcher->FreeNotification(this);
  }
}

void TFmxObject::FreeNotification(TFmxObject* object) { Notification(object); }

TFmxObject* TFmxObject::FindComponent(std::u16string_view name) const {
  for (TFmxObject* c : FComponents)
    if (!c->Name.empty() && SameText(c->Name, name)) return c;
  return nullptr;
}

void TFmxObject::InsertComponent(TFmxObject* component) {
  if (!component || component->FOwner == this) return;
  if (component->FOwner) component->FOwner->RemoveComponent(component);
  component->FOwner = this;
  FComponents.push_back(component);
}

void TFmxObject::RemoveComponent(TFmxObject* component) {
  if (!component || component->FOwner != this) return;
  std::erase(FComponents, component);
  component->FOwner = nullptr;
}

void TFmxObject::SetParent(TFmxObject* parent) {
  if (parent == FParent) return;
  if (parent)
    parent->AddObject(this);
  else if (FParent)
    FParent->RemoveObject(this);
}

void TFmxObject::AddObject(TFmxObject* object) { InsertObject(ChildrenCount(), object); }

void TFmxObject::InsertObject(int index, TFmxObject* object) {
  if (!object || object == this || FDestroying) return;
  for (TFmxObject* p = this; p; p = p->FParent)
    if (p == object) throw EToolkitError("An object cannot be its own ancestor");
  if (object->FParent == this) return;
  if (object->FParent) object->FParent->RemoveObject(object);
  index = std::clamp(index, 0, ChildrenCount());
  FChildren.insert(FChildren.begin() + index, object);
  object->FParent = this;
  DoAddObject(object);
  object->ParentChanged();
  ChildrenChanged();
}

void TFmxObject::RemoveObject(TFmxObject* object) {
  if (!object || object->FParent != this) return;
  std::erase(FChildren, object);
  object->FParent = nullptr;
  DoRemoveObject(object);
  if (!object->FDestroying) object->ParentChanged();
  if (!FDestroying) ChildrenChanged();
}

void TFmxObject::RemoveObject(int index) {
  if (index >= 0 && index < ChildrenCount()) RemoveObject(Children(index));
}

void TFmxObject::DoAddObject(TFmxObject*) {}
void TFmxObject::DoRemoveObject(TFmxObject*) {}

void TFmxObject::DeleteChildren() {
  // Children die with their parent whoever owns them; their destructor detaches them from the owner.
  while (!FChildren.empty()) delete FChildren.back();
}

bool TFmxObject::IsAncestorOf(const TFmxObject* object) const {
  for (const TFmxObject* p = object; p; p = p->FParent)
    if (p == this) return true;
  return false;
}

int TFmxObject::Index() const {
  if (!FParent) return -1;
  auto& list = FParent->FChildren;
  return static_cast<int>(std::find(list.begin(), list.end(), this) - list.begin());
}

void TFmxObject::SetIndex(int index) {
  if (!FParent) return;
  auto& list = FParent->FChildren;
  std::erase(list, this);
  index = std::clamp(index, 0, static_cast<int>(list.size()));
  list.insert(list.begin() + index, this);
  FParent->ChildrenChanged();
}

void TFmxObject::BringToFront() {
  if (FParent) SetIndex(FParent->ChildrenCount());
}

void TFmxObject::SendToBack() { SetIndex(0); }

void TFmxObject::SortChildren(const std::function<bool(TFmxObject*, TFmxObject*)>& less) {
  std::stable_sort(FChildren.begin(), FChildren.end(), less);
  ChildrenChanged();
}

void TFmxObject::SortChildrenByKey(const std::function<double(TFmxObject*)>& key) {
  std::vector<std::pair<double, TFmxObject*>> keyed;
  keyed.reserve(FChildren.size());
  for (TFmxObject* child : FChildren) keyed.emplace_back(key(child), child);
  auto less = [](const auto& a, const auto& b) { return a.first < b.first; };
  if (std::is_sorted(keyed.begin(), keyed.end(), less)) return;
  std::stable_sort(keyed.begin(), keyed.end(), less);
  for (std::size_t i = 0; i < keyed.size(); ++i) FChildren[i] = keyed[i].second;
  ChildrenChanged();
}

TFmxObject* TFmxObject::FindStyleResource(std::u16string_view styleName) const {
  for (TFmxObject* c : FChildren) {
    if (SameText(c->StyleName, styleName)) return c;
    if (TFmxObject* found = c->FindStyleResource(styleName)) return found;
  }
  return nullptr;
}

TFmxObject* TFmxObject::Root() const {
  const TFmxObject* p = this;
  while (p->FParent) p = p->FParent;
  return const_cast<TFmxObject*>(p);
}

void TFmxObject::AddFreeNotify(IFreeNotification* watcher) {
  if (!watcher || FDestroying) return;
  if (std::find(FWatchers.begin(), FWatchers.end(), watcher) != FWatchers.end()) return;
  FWatchers.push_back(watcher);
  if (auto* object = dynamic_cast<TFmxObject*>(watcher)) object->FWatching.push_back(this);
}

void TFmxObject::RemoveFreeNotify(IFreeNotification* watcher) {
  std::erase(FWatchers, watcher);
  if (auto* object = dynamic_cast<TFmxObject*>(watcher)) std::erase(object->FWatching, this);
}

const TPropertyTable& TFmxObject::ClassProperties() {
  static const TPropertyTable table = [] {
    TPropertyTable t;
    t.Stored("Name", [](TFmxObject* o, const TStoredValue& v) { o->Name = StoredText(v, "Name"); });
    t.Stored("StyleName", [](TFmxObject* o, const TStoredValue& v) { o->StyleName = StoredText(v, "StyleName"); });
    t.Stored("Tag", [](TFmxObject* o, const TStoredValue& v) { o->Tag = static_cast<std::intptr_t>(StoredFloat(v, "Tag")); });
    t.Float("TagFloat", {[](TFmxObject* o) { return o->TagFloat; }, [](TFmxObject* o, float v) { o->TagFloat = v; }});
    return t;
  }();
  return table;
}

const TPropertyTable& TFmxObject::Properties() const { return ClassProperties(); }

}  // namespace qx
