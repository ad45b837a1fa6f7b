// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "Subject.h"

#include <algorithm>
#include <cstring>

#include "NetSNMP.h"
#include "NetSNMPBoolNodeData.h"
#include "NetSNMPByteNodeData.h"
#include "NetSNMPCharNodeData.h"
#include "NetSNMPIntNodeData.h"
#include "NetSNMPSizedCharNodeData.h"
#include "NetSNMPStringNodeData.h"
#include "NetSNMPUnsignedIntNodeData.h"

namespace {

constexpr unsigned int kLabelSize = 2048;  // above what an input can hold
constexpr unsigned int kSizedLabelSize = 16;
constexpr unsigned int kAddressSize = 6;

std::string TextIn(const std::string& bytes) {
  return bytes.substr(0, bytes.find('\0'));
}

bool IsIntegerType(unsigned char type) {
  return type == ASN_INTEGER || type == ASN_COUNTER || type == ASN_UNSIGNED ||
         type == ASN_TIMETICKS || type == ASN_UINTEGER;
}

// The integer that the agent library keeps in these bytes.
int IntegerIn(const std::string& bytes) {
  const bool bigEndian = __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__;
  const std::size_t size = std::min(bytes.size(), sizeof(long));
  unsigned long number = 0;
  for (std::size_t i = 0; i < size; ++i) {
    const auto byte = static_cast<unsigned char>(bytes[i]);
    number |= static_cast<unsigned long>(byte)
              << (8 * (bigEndian ? size - 1 - i : i));
  }
  return static_cast<int>(number);
}

}  // namespace

Subject::Subject(Input& input)
    : type_(static_cast<int>(input.Below(9))),
      typed_(input.Below(4) != 0 && type_ >= eNodeDataInt &&
             type_ <= eNodeDataByte),
      sized_(typed_ && type_ == eNodeDataChar && input.Below(2) == 0),
      access_(static_cast<eNodeAccessMode>(input.Below(5))),
      storage_(static_cast<Storage>(input.Below(3))),
      number_(type_ == eNodeDataBool ? 1 : 7) {
  variables_.number = 7;
  variables_.count = 7;
  variables_.truth = true;
  variables_.label.reset(new char[sized_ ? kSizedLabelSize : kLabelSize]());
  variables_.address.reset(new unsigned char[kAddressSize]());
  if (type_ == eNodeDataByte && storage_ != Storage::kNone) {
    text_.assign(kAddressSize, '\0');
  }
  if (type_ == eNodeDataString && storage_ != Storage::kNone) {
    text_ = variables_.text = "initial";
  }
  if (type_ == eNodeDataChar && storage_ != Storage::kNone) {
    text_ = "initial";
    std::strcpy(variables_.label.get(), "initial");
  }
  value_ = Build();
}

std::unique_ptr<NetSNMPNodeData> Subject::Build() {
  const bool none = storage_ == Storage::kNone;
  const bool copy = storage_ == Storage::kCopy;
  if (!typed_) {
    return std::make_unique<NetSNMPNodeData>(static_cast<eNodeDataType>(type_),
                                             access_, variables_.label.get(),
                                             nullptr);
  }
  switch (type_) {
    case eNodeDataInt:
      return std::make_unique<NetSNMPIntNodeData>(
          none ? nullptr : &variables_.number, access_, copy);
    case eNodeDataUnsignedInt:
      return std::make_unique<NetSNMPUnsignedIntNodeData>(
          none ? nullptr : &variables_.count, access_, copy);
    case eNodeDataString:
      return std::make_unique<NetSNMPStringNodeData>(
          none ? nullptr : &variables_.text, access_, copy);
    case eNodeDataChar:
      if (sized_) {
        return std::make_unique<NetSNMPSizedCharNodeData>(
            none ? nullptr : variables_.label.get(), kSizedLabelSize, access_,
            copy);
      }
      return std::make_unique<NetSNMPCharNodeData>(
          none ? nullptr : variables_.label.get(), access_, copy);
    case eNodeDataBool:
      return std::make_unique<NetSNMPBoolNodeData>(
          none ? nullptr : &variables_.truth, access_, copy);
    default:
      return std::make_unique<NetSNMPByteNodeData>(
          none ? nullptr : variables_.address.get(), none ? 0 : kAddressSize,
          access_, copy);
  }
}

int Subject::Validated(unsigned char asnType, const std::string& bytes) const {
  if (!Writable()) return SNMP_ERR_NOTWRITABLE;
  const bool integer = bytes.size() == 4 ||
                       (bytes.size() == sizeof(long) && IsIntegerType(asnType));
  const int number = IntegerIn(bytes);
  switch (type_) {
    case eNodeDataVoid:
      return SNMP_ERR_BADVALUE;
    case eNodeDataInt:
    case eNodeDataUnsignedInt:
      return integer ? SNMP_ERR_NOERROR : SNMP_ERR_BADVALUE;
    case eNodeDataBool:
      return number == 1 || number == 2 ? SNMP_ERR_NOERROR : SNMP_ERR_BADVALUE;
    case eNodeDataChar:
      return Fits(bytes) ? SNMP_ERR_NOERROR : SNMP_ERR_WRONGLENGTH;
    case eNodeDataString:
    case eNodeDataByte:
      return SNMP_ERR_NOERROR;
    default:
      return SNMP_ERR_NOSUCHNAME;
  }
}

int Subject::Committed() const {
  return type_ >= eNodeDataInt && type_ <= eNodeDataByte ? SNMP_ERR_NOERROR
                                                         : SNMP_ERR_NOSUCHNAME;
}

void Subject::Commit(const std::string& bytes) {
  if (!typed_) return;
  switch (type_) {
    case eNodeDataInt:
      number_ = IntegerIn(bytes);
      break;
    case eNodeDataUnsignedInt:
      number_ = static_cast<unsigned int>(IntegerIn(bytes));
      break;
    case eNodeDataBool:
      number_ = IntegerIn(bytes) == 1 ? 1 : 2;
      break;
    case eNodeDataString:
    case eNodeDataChar:
      if (Fits(bytes)) CommitText(TextIn(bytes));
      break;
    default:
      break;
  }
}

bool Subject::Fits(const std::string& bytes) const {
  return !sized_ || TextIn(bytes).size() < kSizedLabelSize;
}

// A character text without a place of its own takes one; a string does not.
void Subject::CommitText(const std::string& text) {
  if (storage_ == Storage::kNone && type_ == eNodeDataString) return;
  text_ = text;
}

bool Subject::ReadsFrom(NetSNMPNodeData& value) const {
  variable_list* read = nullptr;
  snmp_varlist_add_variable(&read, nullptr, 0, ASN_NULL, nullptr, 0);
  const int status = NetSNMP::get_snmp_value(read, &value);
  bool expected = false;
  if (!typed_) {
    expected = status == 0 && read->type == ASN_NULL && read->val_len == 0;
  } else if (type_ == eNodeDataInt || type_ == eNodeDataUnsignedInt ||
             type_ == eNodeDataBool) {
    const unsigned char type =
        type_ == eNodeDataUnsignedInt ? ASN_UNSIGNED : ASN_INTEGER;
    expected = storage_ == Storage::kNone ? status == SNMP_ERR_TOOBIG
                                          : status == 0 && read->type == type &&
                                                *read->val.integer == number_;
  } else {
    expected = status == 0 && read->type == ASN_OCTET_STR &&
               read->val_len == text_.size() &&
               std::equal(text_.begin(), text_.end(),
                          reinterpret_cast<const char*>(read->val.string));
  }
  snmp_free_varbind(read);
  return expected;
}
