#pragma once

// The object tree. An object is deleted by its owner (the component that made
// it) or, failing that, by its parent in the visual tree; deleting an object
// deletes its children and owned components, detaches it from its parent and
// owner, and tells every free-notify watcher.

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "toolkit/Properties.h"
#include "toolkit/Types.h"

namespace qx {

class TFmxObject;
class TControl;
class TBlurEffect;

using TNotifyEvent = std::function<void(TFmxObject* sender)>;

class IFreeNotification {
 public:
  virtual void FreeNotification(TFmxObject* object) = 0;

 protected:
  ~IFreeNotification() = default;
};

class TFmxObject : public IFreeNotification {
 public:
  explicit TFmxObject(TFmxObject* owner = nullptr);
  virtual ~TFmxObject();
  TFmxObject(const TFmxObject&) = delete;
  TFmxObject& operator=(const TFmxObject&) = delete;

  virtual std::string ClassName() const { return "TFmxObject"; }
  // The kinds that painting and layout ask every child for, without a cast's
  // cost over thousands of children.
  virtual TControl* AsControl() { return nullptr; }
  virtual TBlurEffect* AsBlurEffect() { return nullptr; }

  // Ownership (deletion) and component lookup by name.
  TFmxObject* Owner() const { return FOwner; }
  const std::vector<TFmxObject*>& Components() const { return FComponents; }
  TFmxObject* FindComponent(std::u16string_view name) const;
  void InsertComponent(TFmxObject* component);
  void RemoveComponent(TFmxObject* component);

  // Visual tree.
  TFmxObject* Parent() const { return FParent; }
  void SetParent(TFmxObject* parent);
  void AddObject(TFmxObject* object);
  void InsertObject(int index, TFmxObject* object);
  void RemoveObject(TFmxObject* object);
  void RemoveObject(int index);
  void DeleteChildren();
  int ChildrenCount() const { return static_cast<int>(FChildren.size()); }
  TFmxObject* Children(int index) const { return FChildren.at(static_cast<std::size_t>(index)); }
  const std::vector<TFmxObject*>& ChildList() const { return FChildren; }
  int Index() const;
  void SetIndex(int index);
  void BringToFront();
  void SendToBack();
  // Stable sort of the children; this is their paint order (z-order).
  void SortChildren(const std::function<bool(TFmxObject*, TFmxObject*)>& less);
  // Stable order by a key asked once per child; an order already right is left
  // alone and raises no change.
  void SortChildrenByKey(const std::function<double(TFmxObject*)>& key);
  TFmxObject* FindStyleResource(std::u16string_view styleName) const;
  TFmxObject* Root() const;
  bool IsAncestorOf(const TFmxObject* object) const;

  void AddFreeNotify(IFreeNotification* watcher);
  void RemoveFreeNotify(IFreeNotification* watcher);
  void FreeNotification(TFmxObject* object) override;

  bool IsDestroying() const { return FDestroying; }

  std::u16string Name;
  std::u16string StyleName;
  std::intptr_t Tag = 0;
  float TagFloat = 0;
  std::u16string TagString;
  TFmxObject* TagObject = nullptr;

  // Named properties: animations and stored layouts reach them through this.
  virtual const TPropertyTable& Properties() const;
  static const TPropertyTable& ClassProperties();

 protected:
  virtual void DoAddObject(TFmxObject* object);
  virtual void DoRemoveObject(TFmxObject* object);
  virtual void ParentChanged() {}
  virtual void ChildrenChanged() {}
  // A watched object is going away (the base class already dropped it from the watch lists).
  virtual void Notification(TFmxObject* /*object*/) {}
  // Called first thing when destruction starts, while the object is still whole.
  virtual void BeforeDestruction() {}
  void SetDestroying() { FDestroying = true; }

 private:
  void NotifyWatchers();

  TFmxObject* FOwner = nullptr;
  TFmxObject* FParent = nullptr;
  std::vector<TFmxObject*> FComponents;
  std::vector<TFmxObject*> FChildren;
  std::vector<IFreeNotification*> FWatchers;
  std::vector<TFmxObject*> FWatching;  // objects whose watch list holds this one
  bool FDestroying = false;
};

}  // namespace qx
