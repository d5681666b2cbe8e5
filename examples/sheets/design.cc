#include "design.h"

#include <vector>

#include "netlist/design_image.h"

namespace {

// A net is known by its path and, where a sheet shows it, by N_ and its object id on that sheet.
class flat_design {
public:
    flat_design() {
        for (const char* name : {"PIN", "RISE", "FALL"})
            image.prop_pin.push_back({tm_string(name), tm_string("")});
        image.prop_instance.push_back({tm_string("MODEL"), tm_string("")});
        image.info.time_step = 1;
    }

    void net(const std::string& level, const std::string& name, std::int16_t object_id,
             std::int16_t type = YX_TSTANDARD) {
        yx_net_record_t& net = image.nets.emplace_back();
        net.self = static_cast<std::int32_t>(image.nets.size());
        net.net_type = type;
        net.object_id = object_id;
        net.sim_path = yxw_string(image, level + name);
        net.name = yxw_string(image, level + "N_" + std::to_string(object_id));
        nets_[level + name] = net.self;
    }

    // The net of a sheet below is the net above.
    void join(const std::string& level, const std::string& name, std::int16_t object_id,
              const std::string& above) {
        yx_net_child_record_t& child = image.net_children.emplace_back();
        child.self = static_cast<std::int32_t>(image.net_children.size());
        child.object_id = object_id;
        child.name = yxw_string(image, level + name);
        child.sim_path = yxw_string(image, level + "N_" + std::to_string(object_id));
        const std::int32_t index = nets_[level + name] = nets_.at(above);
        yx_net_record_t& net = at(image.nets, index);
        std::int32_t* link = &net.first_child;
        while (*link != 0) link = &at(image.net_children, *link).next_child;
        *link = child.self;
        ++net.nb_of_child;
    }

    void bus(const std::string& path, std::int32_t first_member, std::int16_t bits) {
        const std::int32_t bus = nets_.at(path);
        at(image.nets, bus).UU.U2 = {.net_bus_start = 0,
                                     .net_bus_end = static_cast<std::int16_t>(bits - 1),
                                     .netind_start = first_member};
        for (std::int16_t bit = 0; bit < bits; ++bit) {
            at(image.nets, first_member + bit).UU.U1.bus = bus;
            at(image.nets, first_member + bit).UU.U1.posinbus = static_cast<std::int16_t>(bit + 1);
        }
    }

    // Output O, inputs I1, I2, ...
    void gate(const std::string& level, const std::string& name, const std::string& model,
              const std::string& output, const std::vector<std::string>& inputs) {
        yx_inst_record_t& inst = image.insts.emplace_back();
        inst.self = static_cast<std::int32_t>(image.insts.size());
        inst.sim_path = yxw_string(image, level + name);
        inst.nb_of_pin = static_cast<std::int16_t>(inputs.size() + 1);
        inst.first_pin_ind = static_cast<std::int32_t>(image.pins.size()) + 1;
        inst.nb_of_property = 1;
        inst.first_prop = add_text(model);
        pin(inst, level + name + "/", "O", nets_.at(level + output), true);
        for (std::size_t i = 0; i < inputs.size(); ++i)
            pin(inst, level + name + "/", "I" + std::to_string(i + 1), nets_.at(level + inputs[i]), false);
    }

    yx_design_image_t image;

private:
    template <typename Record>
    static Record& at(std::vector<Record>& records, std::int32_t index) {
        return records[static_cast<std::size_t>(index - 1)];
    }

    std::int32_t add_text(const std::string& text) {
        image.props.emplace_back().valuec = yxw_string(image, text);
        return static_cast<std::int32_t>(image.props.size());
    }

    void add_time(std::int32_t steps) {
        yx_prop_record_t& time = image.props.emplace_back();
        time.prop_type = YX_PTIME;
        for (std::int32_t& value : time.valuet) value = steps;
    }

    void pin(const yx_inst_record_t& inst, const std::string& path, const std::string& name,
             std::int32_t net_index, bool is_output) {
        yx_pin_record_t& pin = image.pins.emplace_back();
        yx_net_record_t& net = at(image.nets, net_index);
        pin.self = static_cast<std::int32_t>(image.pins.size());
        pin.io_type = is_output ? 2 : 1;
        pin.pin_hdl_priority = 1;
        pin.sim_path = yxw_string(image, path + name);
        pin.instance_ind = inst.self;
        pin.net_ind = net_index;
        pin.first_prop = add_text(name);
        pin.nb_of_property = 3;
        for (int edge = 0; edge < 2; ++edge) add_time(is_output ? 2 : 0);
        std::int32_t& first = is_output ? net.first_pin_out_ind : net.first_pin_in_ind;
        (is_output ? pin.next_pin_out_ind : pin.next_pin_in_ind) = first;
        first = pin.self;
        ++(is_output ? net.nb_pin_out : net.nb_pin_in);
    }

    std::map<std::string, std::int32_t> nets_;  // by path, also of the sheets below
};

void add_carry(flat_design& design, const std::string& level, const std::string& above, const net_ids& ids) {
    for (const char* port : {"A", "B"}) design.join(level, port, ids.at(port), above + port);
    design.join(level, "Y", ids.at("Y"), above + "C");
    design.net(level, "M", ids.at("M"));
    design.gate(level, "K1", "NAND", "M", {"A", "B"});
    design.gate(level, "K2", "NAND", "Y", {"M"});
}

void add_adder(flat_design& design, const std::string& level, const std::map<std::string, std::string>& ports,
               const net_ids& adder, const net_ids& carry) {
    for (const auto& [port, above] : ports) design.join(level, port, adder.at(port), "/" + above);
    design.gate(level, "X1", "XOR", "S", {"A", "B"});
    add_carry(design, level + "P1/", level, carry);
}

}  // namespace

bool write_design(const std::string& directory, const net_ids& top, const net_ids& adder,
                  const net_ids& carry, std::string& why) {
    flat_design design;
    design.net("/", "D", top.at("D"), YX_TSTD_BUS);
    for (const char* name : {"D[0]", "D[1]", "CIN", "T", "SUM", "C1", "C2", "COUT", "NCOUT"})
        design.net("/", name, top.at(name));
    design.bus("/D", 2, 2);
    add_adder(design, "/U1/", {{"A", "D[0]"}, {"B", "D[1]"}, {"S", "T"}, {"C", "C1"}}, adder, carry);
    add_adder(design, "/U2/", {{"A", "T"}, {"B", "CIN"}, {"S", "SUM"}, {"C", "C2"}}, adder, carry);
    design.gate("/", "G1", "OR", "COUT", {"C1", "C2"});
    design.gate("/", "G2", "NAND", "NCOUT", {"COUT"});
    return yxw_write(design.image, directory + "/design_yx", why);
}
