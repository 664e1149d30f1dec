#include "text/JSONTree.h"

#include "text/JSONTextBuilder.h"
#include "text/JSONValueImpl.h"

namespace qx {

struct TJSONBuildFrame {
  TJSONObjectImpl* Obj;
  TJSONArrayImpl* Arr;
  std::int32_t Index;
  bool MultiLine;
};

struct TJSONBuildQueue {
  std::vector<TJSONBuildFrame> Frames;
};

namespace json_detail {
namespace {

struct TWalkFrame {
  TJSONObjectImpl* Obj;
  TJSONArrayImpl* Arr;
  ComPtr<IJSONValue> Keep;  // the visitor may drop the container from its parent
  std::int32_t Index;
};

thread_local std::vector<TWalkFrame>* tActiveWalk = nullptr;
thread_local std::vector<ComPtr<IJSONValue>>* tActiveGrave = nullptr;

// The visitor is foreign code: a walk it starts itself must be a walk of its own.
void CallVisitor(IJSONValue* value, IJSONValueVisitor& visitor) {
  struct Restore {
    std::vector<TWalkFrame>* saved;
    ~Restore() { tActiveWalk = saved; }
  } restore{tActiveWalk};
  tActiveWalk = nullptr;
  visitor.Visit(value);
}

IJSONValue* AsValue(TJSONObjectImpl* o, TJSONArrayImpl* a) {
  return o ? static_cast<IJSONValue*>(o) : static_cast<IJSONValue*>(a);
}

void OpenContainer(TJSONObjectImpl* object, TJSONArrayImpl* array, const TJSONCreateTextOption& opt,
                   TJSONTextBuilder& b, bool InArray) {
  if (object) {
    b.Write(u'{');
    const bool multi = !(opt.FPackedObject || (opt.FArrayElementPack && InArray) ||
                         (opt.FPackOneFieldObject && object->GetCount() < 2));
    if (multi) {
      b.WriteLineBreak();
      b.IncrIndent();
    }
    b.FBuildQueue->Frames.push_back(TJSONBuildFrame{object, nullptr, 0, multi});
    return;
  }
  b.Write(u'[');
  if (opt.FPackEmptyArray && array->GetCount() == 0) {
    b.Write(u']', true);
    return;
  }
  if (!opt.FPackedArray) b.WriteLineBreak();
  b.IncrIndent();
  b.FBuildQueue->Frames.push_back(TJSONBuildFrame{nullptr, array, 0, false});
}

void WriteChild(IJSONValue* v, const TJSONCreateTextOption& opt, TJSONTextBuilder& b, bool InArray) {
  if (v)
    v->BuildJSONText(opt, b, InArray);
  else
    b.Write(u"null");  // an array may hold nil
}

}  // namespace

void BuildContainer(TJSONObjectImpl* object, TJSONArrayImpl* array, const TJSONCreateTextOption& option,
                    TJSONTextBuilder& builder, bool InArray) {
  if (builder.FBuildQueue) {
    OpenContainer(object, array, option, builder, InArray);
    return;
  }
  TJSONBuildQueue queue;
  struct Detach {
    TJSONTextBuilder& b;
    ~Detach() { b.FBuildQueue = nullptr; }
  } detach{builder};
  builder.FBuildQueue = &queue;
  OpenContainer(object, array, option, builder, InArray);
  auto& frames = queue.Frames;
  while (!frames.empty()) {
    TJSONBuildFrame& f = frames.back();
    if (f.Obj) {
      if (f.Index < f.Obj->GetCount()) {
        const std::int32_t i = f.Index++;
        TJSONObjectImpl* obj = f.Obj;
        if (i > 0) {
          builder.WriteValueSeparator();
          if (!option.FPackedObject) builder.WriteLineBreak();
        }
        builder.WriteJSONString(obj->MemberName(i));
        builder.WriteNameSeparator();
        WriteChild(obj->MemberValue(i), option, builder, false);  // may push a frame
        continue;
      }
      const bool multi = f.MultiLine;
      frames.pop_back();
      if (multi) {
        builder.WriteLineBreak();
        builder.DecrIndent();
      }
      builder.Write(u'}', true);
    } else {
      if (f.Index < f.Arr->GetCount()) {
        const std::int32_t i = f.Index++;
        TJSONArrayImpl* arr = f.Arr;
        if (i > 0) {
          builder.WriteValueSeparator();
          if (!option.FPackedArray) builder.WriteLineBreak();
        }
        WriteChild(arr->ItemAt(i), option, builder, true);
        continue;
      }
      const bool hadItems = f.Index > 0;
      frames.pop_back();
      if (hadItems && !option.FPackedArray) builder.WriteLineBreak();
      builder.DecrIndent();
      builder.Write(u']', true);
    }
  }
}

void WalkContainer(TJSONObjectImpl* object, TJSONArrayImpl* array, IJSONValueVisitor& visitor) {
  IJSONValue* self = AsValue(object, array);
  if (tActiveWalk) {
    std::vector<TWalkFrame>* walk = tActiveWalk;
    CallVisitor(self, visitor);
    walk->push_back(TWalkFrame{object, array, ComPtr<IJSONValue>(self), 0});
    return;
  }
  std::vector<TWalkFrame> frames;
  ComPtr<IJSONValue> keepSelf(self);
  CallVisitor(self, visitor);
  frames.push_back(TWalkFrame{object, array, keepSelf, 0});
  struct Activate {
    ~Activate() { tActiveWalk = nullptr; }
  } activate;
  tActiveWalk = &frames;
  while (!frames.empty()) {
    TWalkFrame& f = frames.back();
    IJSONValue* child = nullptr;
    if (f.Obj) {
      if (f.Index >= f.Obj->GetCount()) {
        frames.pop_back();
        continue;
      }
      child = f.Obj->MemberValue(f.Index++);
    } else {
      if (f.Index >= f.Arr->GetCount()) {
        frames.pop_back();
        continue;
      }
      child = f.Arr->ItemAt(f.Index++);
    }
    if (!child) continue;
    const ComPtr<IJSONValue> keepChild(child);
    child->WalkValues(visitor);  // a container pushes its own frame
  }
}

namespace {
// Destructor nesting allowed before children are deferred.
constexpr int kDirectReleaseDepth = 64;
thread_local int tReleaseDepth = 0;
}  // namespace

TJSONBurial::TJSONBurial() { ++tReleaseDepth; }

TJSONBurial::~TJSONBurial() {
  if (FOwner) {
    while (!FGrave.empty()) {
      ComPtr<IJSONValue> last = std::move(FGrave.back());
      FGrave.pop_back();
      last.reset();  // its destructor may add to FGrave
    }
    tActiveGrave = nullptr;
  }
  --tReleaseDepth;
}

void TJSONBurial::Add(ComPtr<IJSONValue>&& value) {
  if (!value) return;
  if (tReleaseDepth < kDirectReleaseDepth) {
    value.reset();
    return;
  }
  if (!tActiveGrave) {
    FOwner = true;
    tActiveGrave = &FGrave;
  }
  tActiveGrave->push_back(std::move(value));
}

// --- shared parts of TJSONValueImpl ---

std::u16string ToJSONText(IJSONValue* value, const TJSONCreateTextOption& option) {
  TJSONTextBuilder builder(option, 0);
  value->BuildJSONText(option, builder, false);
  std::u16string text = builder.GetText();
  if (option.FTruncateTrailingWhiteSpaces) {
    std::size_t n = text.size();
    while (n > 0 && text[n - 1] <= u' ') --n;
    text.resize(n);
  }
  return text;
}

std::u16string ToPackedJSONText(IJSONValue* value) {
  TJSONCreateTextOption option;
  option.FNoIndent = true;
  option.FNoLineBreak = true;
  option.FPackedArray = true;
  option.FPackedObject = true;
  option.FSpaceAfterNameSeparator = false;
  return ToJSONText(value, option);
}

void VisitScalar(IJSONValue* value, IJSONValueVisitor& visitor) { CallVisitor(value, visitor); }

void SortObjectMembers(IJSONValue* value) {
  struct Sorter final : IJSONValueVisitor {
    void Visit(IJSONValue* v) override {
      if (const ComPtr<IJSONObject> o = v->AsObject()) o->SortMembersByName();
    }
  } sorter;
  value->WalkValues(sorter);
}

}  // namespace json_detail

void WalkJSONValues(IJSONValue* value, const std::function<void(IJSONValue*)>& visit) {
  if (!value || !visit) return;
  struct Adapter final : IJSONValueVisitor {
    const std::function<void(IJSONValue*)>& f;
    explicit Adapter(const std::function<void(IJSONValue*)>& fn) : f(fn) {}
    void Visit(IJSONValue* v) override { f(v); }
  } adapter(visit);
  value->WalkValues(adapter);
}

}  // namespace qx
