#pragma once

#include <cstdint>
#include <initializer_list>

namespace kiv {

/// What an item is: its parameter P1. Page files may hold any number there; one that is not whole equals no type that
/// has a name.
class ItemType {
 public:
  constexpr explicit ItemType(float p1) : p1_(p1) {}

  /// P1 as it stands in the file.
  constexpr float number() const { return p1_; }
  /// Whether items of the type carry a text.
  constexpr bool hasText() const;

  constexpr bool operator==(const ItemType&) const = default;

  static const ItemType note;
  static const ItemType rest;  ///< also the cue markers
  static const ItemType clef;
  static const ItemType staff;
  static const ItemType instrumentNumber;  ///< shows an instrument identifier on the page
  static const ItemType shortText;
  static const ItemType barline;  ///< also braces and brackets
  static const ItemType text;
  static const ItemType countedText;
  static const ItemType keySignature;
  static const ItemType timeSignature;
  static const ItemType deleted;  ///< in memory only

 private:
  float p1_;
};

inline constexpr ItemType ItemType::note{1};
inline constexpr ItemType ItemType::rest{2};
inline constexpr ItemType ItemType::clef{3};
inline constexpr ItemType ItemType::staff{8};
inline constexpr ItemType ItemType::instrumentNumber{10};
inline constexpr ItemType ItemType::shortText{11};
inline constexpr ItemType ItemType::barline{14};
inline constexpr ItemType ItemType::text{15};
inline constexpr ItemType ItemType::countedText{16};
inline constexpr ItemType ItemType::keySignature{17};
inline constexpr ItemType ItemType::timeSignature{18};
inline constexpr ItemType ItemType::deleted{999};

constexpr bool ItemType::hasText() const {
  return *this == shortText || *this == text || *this == countedText;
}

/// P1 of the items of a page file lies between these two.
constexpr float lowestItemType = 1;
constexpr float highestItemType = 18;

/// A set of whole item types between the lowest and the highest.
class TypeSet {
 public:
  constexpr TypeSet(std::initializer_list<ItemType> types) {
    for (const ItemType type : types) {
      bits_ |= 1U << static_cast<unsigned>(type.number());
    }
  }
  /// All types but these.
  static constexpr TypeSet allBut(std::initializer_list<ItemType> types) {
    TypeSet others(types);
    others.bits_ = ~others.bits_;
    return others;
  }
  /// The type must lie between the lowest and the highest. One that is not whole is in no set.
  constexpr bool contains(ItemType type) const {
    const auto whole = static_cast<std::int32_t>(type.number());
    return static_cast<float>(whole) == type.number() && (bits_ >> static_cast<unsigned>(whole) & 1U) != 0;
  }
  constexpr bool operator==(const TypeSet&) const = default;

 private:
  std::uint32_t bits_ = 0;
};

/// The whole types whose items carry no text.
inline constexpr TypeSet typesWithoutText =
    TypeSet::allBut({ItemType::shortText, ItemType::text, ItemType::countedText});

}  // namespace kiv
