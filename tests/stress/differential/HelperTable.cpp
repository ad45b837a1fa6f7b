// SPDX-License-Identifier: LicenseRef-SnmpSubAgent
#include "HelperTable.h"

#include <utility>

namespace {

void Answer(netsnmp_agent_request_info* info, netsnmp_request_info* request,
            const HelperCells& cells) {
  variable_list* const varbind = request->requestvb;
  switch (netsnmp_extract_table_info(request)->colnum) {
    case 2:
      snmp_set_var_typed_integer(varbind, ASN_INTEGER, cells.number);
      break;
    case 3: {
      const u_long count = cells.count;
      snmp_set_var_typed_value(varbind, ASN_GAUGE, &count, sizeof count);
      break;
    }
    case 4:
      snmp_set_var_typed_value(varbind, ASN_OCTET_STR, cells.text.data(),
                               cells.text.size());
      break;
    default:
      netsnmp_set_request_error(info, request, SNMP_NOSUCHINSTANCE);
  }
}

variable_list* MakeIndexes(const HelperIndexes& indexes) {
  variable_list* list = nullptr;
  for (const HelperIndex& index : indexes) {
    snmp_varlist_add_variable(&list, nullptr, 0, index.type, index.value.data(),
                              index.value.size());
  }
  return list;
}

// The sub-identifiers that the agent library makes of indexes.
HelperTable::Oid EncodedBy(const HelperIndexes& indexes) {
  variable_list* const list = MakeIndexes(indexes);
  oid encoded[MAX_OID_LEN];
  size_t length = 0;
  build_oid_noalloc(encoded, MAX_OID_LEN, &length, nullptr, 0, list);
  snmp_free_varbind(list);
  return {encoded, encoded + length};
}

class ContainerTable final : public HelperTable {
 public:
  using HelperTable::HelperTable;

  void Register() override {
    rows_ = netsnmp_container_find("table_container");
    netsnmp_container_table_register(MakeRegistration(Handle), MakeColumns(),
                                     rows_, TABLE_CONTAINER_KEY_NETSNMP_INDEX);
  }
  void Set(const HelperIndexes& indexes, const HelperCells& cells) override {
    Oid encoded = EncodedBy(indexes);
    auto& row = held_[encoded];
    if (row) {
      row->cells = cells;
      return;
    }
    row = std::make_unique<Row>(Row{{}, std::move(encoded), cells});
    row->index = {row->encoded.size(), row->encoded.data()};
    CONTAINER_INSERT(rows_, row.get());
  }
  void Erase(const HelperIndexes& indexes) override {
    const auto found = held_.find(EncodedBy(indexes));
    if (found == held_.end()) return;
    CONTAINER_REMOVE(rows_, found->second.get());
    held_.erase(found);
  }

 private:
  struct Row {
    netsnmp_index index;  // the container takes a row for it
    Oid encoded;
    HelperCells cells;
  };

  static int Handle(netsnmp_mib_handler*, netsnmp_handler_registration*,
                    netsnmp_agent_request_info* info,
                    netsnmp_request_info* requests) {
    return Serve(info, requests, [](netsnmp_request_info* request) {
      const auto* row =
          static_cast<Row*>(netsnmp_container_table_extract_context(request));
      return row ? &row->cells : nullptr;
    });
  }

  netsnmp_container* rows_ = nullptr;
  std::map<Oid, std::unique_ptr<Row>> held_;
};

class TdataTable final : public HelperTable {
 public:
  using HelperTable::HelperTable;

  void Register() override {
    table_ = netsnmp_tdata_create_table("rows", 0);
    for (const unsigned char type : types_) {
      netsnmp_tdata_add_index(table_, type);
    }
    netsnmp_tdata_register(MakeRegistration(Handle), table_, MakeColumns());
  }
  void Set(const HelperIndexes& indexes, const HelperCells& cells) override {
    Held& held = held_[EncodedBy(indexes)];
    held.cells = cells;
    if (held.row) return;
    held.row = netsnmp_tdata_create_row();
    held.row->data = &held.cells;
    held.row->indexes = MakeIndexes(indexes);
    netsnmp_tdata_add_row(table_, held.row);
  }
  void Erase(const HelperIndexes& indexes) override {
    const auto found = held_.find(EncodedBy(indexes));
    if (found == held_.end()) return;
    netsnmp_tdata_remove_and_delete_row(table_, found->second.row);
    held_.erase(found);
  }

 private:
  struct Held {
    HelperCells cells;
    netsnmp_tdata_row* row = nullptr;
  };

  static int Handle(netsnmp_mib_handler*, netsnmp_handler_registration*,
                    netsnmp_agent_request_info* info,
                    netsnmp_request_info* requests) {
    return Serve(info, requests, [](netsnmp_request_info* request) {
      return static_cast<const HelperCells*>(
          netsnmp_tdata_extract_entry(request));
    });
  }

  netsnmp_tdata* table_ = nullptr;
  std::map<Oid, Held> held_;
};

}  // namespace

netsnmp_handler_registration* HelperTable::MakeRegistration(
    Netsnmp_Node_Handler* handler) {
  return netsnmp_create_handler_registration("rows", handler, name_.data(),
                                             name_.size(), HANDLER_CAN_RONLY);
}

netsnmp_table_registration_info* HelperTable::MakeColumns() const {
  auto* const columns = SNMP_MALLOC_TYPEDEF(netsnmp_table_registration_info);
  for (const unsigned char type : types_) {
    netsnmp_table_helper_add_index(columns, type);
  }
  columns->min_column = 2;
  columns->max_column = 4;
  return columns;
}

int HelperTable::Serve(netsnmp_agent_request_info* info,
                       netsnmp_request_info* requests, FindRow findRow) {
  for (auto* request = requests; request; request = request->next) {
    if (request->processed) continue;
    if (const HelperCells* const cells = findRow(request)) {
      Answer(info, request, *cells);
    } else {
      netsnmp_set_request_error(info, request, SNMP_NOSUCHINSTANCE);
    }
  }
  return SNMP_ERR_NOERROR;
}

std::unique_ptr<HelperTable> MakeContainerTable(
    HelperTable::Oid name, std::vector<unsigned char> types) {
  return std::make_unique<ContainerTable>(std::move(name), std::move(types));
}

std::unique_ptr<HelperTable> MakeTdataTable(HelperTable::Oid name,
                                            std::vector<unsigned char> types) {
  return std::make_unique<TdataTable>(std::move(name), std::move(types));
}
