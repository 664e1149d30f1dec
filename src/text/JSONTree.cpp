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
void CallVisitor(IJSONValue* AValue, IJSONValueVisitor& AVisitor) {
  struct Restore {
    std::vector<TWalkFrame>* saved;
    ~Restore() { tActiveWalk = saved; }
  } restore{tActiveWalk};
  tActiveWalk = nullptr;
  AVisitor.Visit(AValue);
}

IJSONValue* AsValue(TJSONObjectImpl* o, TJSONArrayImpl* a) {
  return o ? static_cast<IJSONValue*>(o) : static_cast<IJSONValue*>(a);
}

void OpenContainer(TJSONObjectImpl* AObject, TJSONArrayImpl* AArray, const TJSONCreateTextOption& opt,
                   TJSONTextBuilder& b, bool InArray) {
  if (AObject) {
    b.Write(u'{');
    const bool multi = !(opt.FPackedObject || (opt.FArrayElementPack && InArray) ||
                         (opt.FPackOneFieldObject && AObject->GetCount() < 2));
    if (multi) {
      b.WriteLineBreak();
      b.IncrIndent();
    }
    b.FBuildQueue->Frames.push_back(TJSONBuildFrame{AObject, nullptr, 0, multi});
    return;
  }
  b.Write(u'[');
  if (opt.FPackEmptyArray && AArray->GetCount() == 0) {
    b.Write(u']', true);
    return;
  }
  if (!opt.FPackedArray) b.WriteLineBreak();
  b.IncrIndent();
  b.FBuildQueue->Frames.push_back(TJSONBuildFrame{nullptr, AArray, 0, false});
}

void WriteChild(IJSONValue* v, const TJSONCreateTextOption& opt, TJSONTextBuilder& b, bool InArray) {
  if (v)
    v->BuildJSONText(opt, b, InArray);
  else
    b.Write(u"null");  // an array may hold nil
}

}  // namespace

void BuildContainer(TJSONObjectImpl* AObject, TJSONArrayImpl* AArray, const TJSONCreateTextOption& AOption,
                    TJSONTextBuilder& ABuilder, bool InArray) {
  if (ABuilder.FBuildQueue) {
    OpenContainer(AObject, AArray, AOption, ABuilder, InArray);
    return;
  }
  TJSONBuildQueue queue;
  struct Detach {
    TJSONTextBuilder& b;
    ~Detach() { b.FBuildQueue = nullptr; }
  } detach{ABuilder};
  ABuilder.FBuildQueue = &queue;
  OpenContainer(AObject, AArray, AOption, ABuilder, InArray);
  auto& frames = queue.Frames;
  while (!frames.empty()) {
    TJSONBuildFrame& f = frames.back();
    if (f.Obj) {
      if (f.Index < f.Obj->GetCount()) {
        const std::int32_t i = f.Index++;
        TJSONObjectImpl* obj = f.Obj;
        if (i > 0) {
          ABuilder.WriteValueSeparator();
          if (!AOption.FPackedObject) ABuilder.WriteLineBreak();
        }
        ABuilder.WriteJSONString(obj->MemberName(i));
        ABuilder.WriteNameSeparator();
        WriteChild(obj->MemberValue(i), AOption, ABuilder, false);  // may push a frame
        continue;
      }
      const bool multi = f.MultiLine;
      frames.pop_back();
      if (multi) {
        ABuilder.WriteLineBreak();
        ABuilder.DecrIndent();
      }
      ABuilder.Write(u'}', true);
    } else {
      if (f.Index < f.Arr->GetCount()) {
        const std::int32_t i = f.Index++;
        TJSONArrayImpl* arr = f.Arr;
        if (i > 0) {
          ABuilder.WriteValueSeparator();
          if (!AOption.FPackedArray) ABuilder.WriteLineBreak();
        }
        WriteChild(arr->ItemAt(i), AOption, ABuilder, true);
        continue;
      }
      const bool hadItems = f.Index > 0;
      frames.pop_back();
      if (hadItems && !AOption.FPackedArray) ABuilder.WriteLineBreak();
      ABuilder.DecrIndent();
      ABuilder.Write(u']', true);
    }
  }
}

void WalkContainer(TJSONObjectImpl* AObject, TJSONArrayImpl* AArray, IJSONValueVisitor& AVisitor) {
  IJSONValue* self = AsValue(AObject, AArray);
  if (tActiveWalk) {
    std::vector<TWalkFrame>* walk = tActiveWalk;
    CallVisitor(self, AVisitor);
    walk->push_back(TWalkFrame{AObject, AArray, ComPtr<IJSONValue>(self), 0});
    return;
  }
  std::vector<TWalkFrame> frames;
  ComPtr<IJSONValue> keepSelf(self);
  CallVisitor(self, AVisitor);
  frames.push_back(TWalkFrame{AObject, AArray, keepSelf, 0});
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
    child->WalkValues(AVisitor);  // a container pushes its own frame
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

void TJSONBurial::Add(ComPtr<IJSONValue>&& AValue) {
  if (!AValue) return;
  if (tReleaseDepth < kDirectReleaseDepth) {
    AValue.reset();
    return;
  }
  if (!tActiveGrave) {
    FOwner = true;
    tActiveGrave = &FGrave;
  }
  tActiveGrave->push_back(std::move(AValue));
}

// --- shared parts of TJSONValueImpl ---

std::u16string ToJSONText(IJSONValue* AValue, const TJSONCreateTextOption& AOption) {
  TJSONTextBuilder builder(AOption, 0);
  AValue->BuildJSONText(AOption, builder, false);
  std::u16string text = builder.GetText();
  if (AOption.FTruncateTrailingWhiteSpaces) {
    std::size_t n = text.size();
    while (n > 0 && text[n - 1] <= u' ') --n;
    text.resize(n);
  }
  return text;
}

std::u16string ToPackedJSONText(IJSONValue* AValue) {
  TJSONCreateTextOption option;
  option.FNoIndent = true;
  option.FNoLineBreak = true;
  option.FPackedArray = true;
  option.FPackedObject = true;
  option.FSpaceAfterNameSeparator = false;
  return ToJSONText(AValue, option);
}

void VisitScalar(IJSONValue* AValue, IJSONValueVisitor& AVisitor) { CallVisitor(AValue, AVisitor); }

void SortObjectMembers(IJSONValue* AValue) {
  struct Sorter final : IJSONValueVisitor {
    void Visit(IJSONValue* v) override {
      if (const ComPtr<IJSONObject> o = v->AsObject()) o->SortMembersByName();
    }
  } sorter;
  AValue->WalkValues(sorter);
}

}  // namespace json_detail

void WalkJSONValues(IJSONValue* AValue, const std::function<void(IJSONValue*)>& AVisit) {
  if (!AValue || !AVisit) return;
  struct Adapter final : IJSONValueVisitor {
    const std::function<void(IJSONValue*)>& f;
    explicit Adapter(const std::function<void(IJSONValue*)>& fn) : f(fn) {}
    void Visit(IJSONValue* v) override { f(v); }
  } adapter(AVisit);
  AValue->WalkValues(adapter);
}

}  // namespace qx
