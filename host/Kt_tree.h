#pragma once

// A tree view as plain data. The module fills it; a host shows it by observing.

#include <memory>
#include <vector>

#include "Kt_text.h"

namespace Kt_data_01 {

struct TTree_Node {
  TText Text, Key;
  int Image = -1;                // -1 for none
  TTree_Node* Parent = nullptr;  // set by the tree; null at the root
  std::vector<std::unique_ptr<TTree_Node>> Children{};
};

/// Told of changes of what lies below a node.
class TTree_Observer {
 public:
  virtual ~TTree_Observer() = default;
  /// Everything below the node may change until the end.
  virtual void Update_Begins(const TTree_Node& below) = 0;
  virtual void Update_Ends(const TTree_Node& below) = 0;
  /// Outside an update: a node has been added as the last below its parent.
  virtual void Node_Added(const TTree_Node& node) = 0;
};

/// Owns its nodes. A node's address stays the same until it is removed.
class TTree {
 public:
  TTree() = default;
  TTree(const TTree&) = delete;
  TTree& operator=(const TTree&) = delete;

  /// Not shown itself.
  TTree_Node& Root() { return root; }
  /// Not owned; null for none.
  void Set_Observer(TTree_Observer* new_observer) { observer = new_observer; }

  /// Updates do not nest.
  void Begin_Update(TTree_Node& below);
  void End_Update();
  /// As the last below its parent; in an update only below the node that it is for.
  TTree_Node& Add(TTree_Node& parent, std::unique_ptr<TTree_Node> node);
  /// In an update alone: frees everything below the node, and sorts what is directly below it by text,
  /// without regard to case; nodes with equal texts keep their order.
  void Clear(TTree_Node& node);
  void Sort(TTree_Node& node);

 private:
  TTree_Node root;
  TTree_Node* updated = nullptr;
  TTree_Observer* observer = nullptr;
};

}  // namespace Kt_data_01
