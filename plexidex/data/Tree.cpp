#include <algorithm>
#include <string>
#include <utility>

#include "Kt_tree.h"
#include "Kt_util_01.h"

namespace Kt_data_01 {

void TTree::Begin_Update(TTree_Node& below) {
  updated = &below;
  if (observer) observer->Update_Begins(below);
}

void TTree::End_Update() {
  const TTree_Node& below = *std::exchange(updated, nullptr);
  if (observer) observer->Update_Ends(below);
}

TTree_Node& TTree::Add(TTree_Node& parent, std::unique_ptr<TTree_Node> node) {
  node->Parent = &parent;
  TTree_Node& added = *parent.Children.emplace_back(std::move(node));
  if (observer && !updated) observer->Node_Added(added);
  return added;
}

void TTree::Clear(TTree_Node& node) {
  node.Children.clear();
}

void TTree::Sort(TTree_Node& node) {
  using TPlace = std::pair<std::string, std::unique_ptr<TTree_Node>>;
  std::vector<TPlace> places;
  places.reserve(node.Children.size());
  for (auto& child : node.Children) {
    std::string key = Kt_util_01::Sort_Key(child->Text);
    places.emplace_back(std::move(key), std::move(child));
  }
  std::stable_sort(places.begin(), places.end(),
                   [](const TPlace& a, const TPlace& b) { return a.first < b.first; });
  std::transform(places.begin(), places.end(), node.Children.begin(),
                 [](TPlace& place) { return std::move(place.second); });
}

}  // namespace Kt_data_01
