#pragma once

// Whole-tree operations of the JSON model. Trees from outside can be as deep as the text
// they came from, so writing, walking and freeing all run on explicit stacks.

#include <vector>

#include "base/ComPtr.h"
#include "text/JSONValue.h"

namespace qx {

class TJSONObjectImpl;
class TJSONArrayImpl;

namespace json_detail {

// Writes an object (object set) or an array. The outermost call drives the whole tree;
// nested containers only queue themselves with the builder.
void BuildContainer(TJSONObjectImpl* object, TJSONArrayImpl* array, const TJSONCreateTextOption& option,
                    TJSONTextBuilder& builder, bool InArray);

// Visits a container and everything below it, parents first, in member order.
void WalkContainer(TJSONObjectImpl* object, TJSONArrayImpl* array, IJSONValueVisitor& visitor);

// Frees the children of a value being freed. Near the top of a tree they are released
// at once, the way any destructor would; below a fixed depth they go to the list of the
// outermost burial at that depth, which releases them one by one, so that a tree of any
// depth is freed with a bounded stack.
class TJSONBurial {
 public:
  TJSONBurial();
  ~TJSONBurial();
  TJSONBurial(const TJSONBurial&) = delete;
  TJSONBurial& operator=(const TJSONBurial&) = delete;
  void Add(ComPtr<IJSONValue>&& value);

 private:
  std::vector<ComPtr<IJSONValue>> FGrave;
  bool FOwner = false;
};

}  // namespace json_detail
}  // namespace qx
