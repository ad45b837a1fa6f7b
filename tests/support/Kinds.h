// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#ifndef SNMPSUBAGENT_TESTS_KINDS_H_
#define SNMPSUBAGENT_TESTS_KINDS_H_

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <memory>
#include <string>
#include <type_traits>

#include "NetSNMP.h"
#include "NetSNMPBoolNodeData.h"
#include "NetSNMPByteNodeData.h"
#include "NetSNMPCharNodeData.h"
#include "NetSNMPIntNodeData.h"
#include "NetSNMPStringNodeData.h"
#include "NetSNMPUnsignedIntNodeData.h"

// The six typed classes, so that what they share is tested once. A kind has the
// class, the type of the variable that it is bound to, the argument of its
// setter, its encoding, and two states of the variable.

using CharArray = std::array<char, 16>;
using ByteArray = std::array<unsigned char, 4>;

template <typename ClassT, typename VariableT, typename ArgumentT>
struct Kind {
  using Class = ClassT;
  using Variable = VariableT;
  using Argument = ArgumentT;
};

struct IntKind : Kind<NetSNMPIntNodeData, int, int> {
  static constexpr const char* kName = "Int";
  static constexpr eNodeDataType kType = eNodeDataInt;
  static constexpr unsigned char kAsnType = ASN_INTEGER;
  static constexpr unsigned int kSize = 4, kSizeWithoutStorage = 4;
  static constexpr int kSetterSlot = 4;
  static constexpr int kOne = 42, kOther = -7;
};

struct UnsignedIntKind
    : Kind<NetSNMPUnsignedIntNodeData, unsigned int, unsigned int> {
  static constexpr const char* kName = "UnsignedInt";
  static constexpr eNodeDataType kType = eNodeDataUnsignedInt;
  static constexpr unsigned char kAsnType = ASN_UNSIGNED;
  static constexpr unsigned int kSize = 4, kSizeWithoutStorage = 4;
  static constexpr int kSetterSlot = 5;
  static constexpr unsigned int kOne = 42, kOther = 4294967295U;
};

struct StringKind
    : Kind<NetSNMPStringNodeData, std::string, const std::string&> {
  static constexpr const char* kName = "String";
  static constexpr eNodeDataType kType = eNodeDataString;
  static constexpr unsigned char kAsnType = ASN_OCTET_STR;
  static constexpr unsigned int kSize = 5, kSizeWithoutStorage = 0;
  static constexpr int kSetterSlot = 7;
  static inline const std::string kOne = "front";
  static inline const std::string kOther = "a text too long to lie inline";
};

struct CharKind : Kind<NetSNMPCharNodeData, CharArray, const char*> {
  static constexpr const char* kName = "Char";
  static constexpr eNodeDataType kType = eNodeDataChar;
  static constexpr unsigned char kAsnType = ASN_OCTET_STR;
  static constexpr unsigned int kSize = 5, kSizeWithoutStorage = 0;
  static constexpr int kSetterSlot = 8;
  static constexpr CharArray kOne = {"front"}, kOther = {"back"};
};

struct BoolKind : Kind<NetSNMPBoolNodeData, bool, bool> {
  static constexpr const char* kName = "Bool";
  static constexpr eNodeDataType kType = eNodeDataBool;
  static constexpr unsigned char kAsnType = ASN_INTEGER;
  static constexpr unsigned int kSize = 4, kSizeWithoutStorage = 4;
  static constexpr int kSetterSlot = 6;
  static constexpr bool kOne = true, kOther = false;
};

struct ByteKind : Kind<NetSNMPByteNodeData, ByteArray, const unsigned char*> {
  static constexpr const char* kName = "Byte";
  static constexpr eNodeDataType kType = eNodeDataByte;
  static constexpr unsigned char kAsnType = ASN_OCTET_STR;
  static constexpr unsigned int kSize = 4, kSizeWithoutStorage = 4;
  static constexpr int kSetterSlot = 16;  // its own, behind those of the base
  static constexpr ByteArray kOne = {{0x0A, 0xFF, 0x00, 0x7F}};
  static constexpr ByteArray kOther = {{1, 2, 3, 4}};
};

using Kinds = testing::Types<IntKind, UnsignedIntKind, StringKind, CharKind,
                             BoolKind, ByteKind>;

struct KindName {
  template <typename K>
  static std::string GetName(int) {
    return K::kName;
  }
};

// The storage that a value works on when it works on `variable`.
template <typename T>
T* StorageIn(T& variable) {
  return &variable;
}
template <typename T, std::size_t size>
T* StorageIn(std::array<T, size>& variable) {
  return variable.data();
}

// What the kind's setter takes to copy the storage at `address`.
template <typename K>
typename K::Argument ArgumentAt(const void* address) {
  if constexpr (std::is_pointer_v<typename K::Argument>) {
    return static_cast<typename K::Argument>(address);
  } else {
    return *static_cast<const typename K::Variable*>(address);
  }
}

// What the kind's setter takes to write `state`.
template <typename K>
typename K::Argument ArgumentOf(const typename K::Variable& state) {
  return ArgumentAt<K>(&state);
}

// A value of class V, which is the kind's own or one derived from it, over
// `variable`, which may be null.
template <typename K, typename V = typename K::Class, typename... Options>
std::unique_ptr<V> MakeValue(typename K::Variable* variable,
                             eNodeAccessMode mode, Options... options) {
  auto* const storage = variable == nullptr ? nullptr : StorageIn(*variable);
  if constexpr (std::is_same_v<K, ByteKind>) {
    return std::make_unique<V>(storage, 4U, mode, options...);
  } else {
    return std::make_unique<V>(storage, mode, options...);
  }
}

// The state of the value; a text up to its end.
template <typename K>
typename K::Variable StateOf(const NetSNMPNodeData& value) {
  typename K::Variable state = {};
  const auto argument = ArgumentAt<K>(value.NodeDataValue());
  if constexpr (std::is_same_v<K, CharKind>) {
    std::strcpy(state.data(), argument);
  } else if constexpr (std::is_same_v<K, ByteKind>) {
    std::memcpy(state.data(), argument, state.size());
  } else {
    state = argument;
  }
  return state;
}

#endif  // SNMPSUBAGENT_TESTS_KINDS_H_
