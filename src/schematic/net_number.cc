// The numbers of nets on sheets of one page and of several.
#include "schematic/net_number.h"

#include "schematic/object_reader.h"
#include "schematic/object_walk.h"

std::int32_t tm_net_number(tm_file_index_t file_index, std::int16_t net) {
    const auto* const record = tm_reader_t(file_index).record<tm_type_net>(net);
    return record != nullptr && record->reserved ? record->net_index : net;
}

std::int16_t tm_numbered_net(tm_file_index_t file_index, std::int32_t number) {
    for (const std::int16_t net : tm_nets(file_index))
        if (tm_net_number(file_index, net) == number) return net;
    return 0;
}

std::int32_t tm_highest_net_number(tm_file_index_t file_index) {
    const std::int16_t first = tm_nets(file_index).first();
    const bool has_pages = first != 0 && tm_object_as<tm_type_net>(file_index, first).reserved;
    return has_pages ? INT32_MAX : tm_file_header(file_index).object_id_max;
}
