#include "objects/design_row.h"

#include "core/vocabulary.h"
#include "objects/object_text.h"

namespace relvane {
namespace {

constexpr std::int64_t eventLength = 60;

// Names and values of the first events; one without such a place left is dropped.
struct EventSlot {
    TextView name, value;
};
constexpr EventSlot eventSlots[] = {
    {u"Ibent1", u"IbentVL1"}, {u"Ibent2", u"IbentVL2"}, {u"Ibent3", u"IbentVL3"}, {u"Ibent4", u"IbentVL4"}};

Value valueFor(const DesignField& field, const Value& value) {
    if (field.length > 0) {
        return cutText(toText(value), field.length);
    }
    return field.label.empty() ? value : Text(field.label) + toText(value);
}

void writeEvents(Recordset& row, const access::Properties& properties, const DesignRow& design) {
    auto slot = std::begin(eventSlots);
    for (int position = design.firstEvent; position <= design.lastEvent; ++position) {
        const access::Property event = properties.Item(position);
        if (!isNotEmptyText(event.Value)) {
            continue;
        }
        if (slot == std::end(eventSlots)) {
            return;
        }
        row.Collect(slot->name, GetEventLabel(event.Name)); // never empty: the slot is taken
        row.Collect(slot->value, cutText(toText(event.Value), eventLength));
        ++slot;
    }
}

// Walking down, each later description replaces the one before.
void writeDescriptions(Recordset& row, dao::Properties& properties) {
    for (int position = properties.Count() - 1; position >= 0; --position) {
        if (properties.Name(position) == u"Description") {
            row.Collect(u"Description", properties.Item(position).value);
        }
    }
}

void writeDocument(AnalysisContext& context, Recordset& row, const DesignRow& design) {
    for (const auto& document : need(context.TargetDb).Containers().Item(design.container).Documents()) {
        if (document->Name() == context.CurDesignName) {
            row.Collect(design.nameField, context.CurDesignName);
            row.Collect(u"DateCreated", document->DateCreated());
            row.Collect(u"LastUpdated", document->LastUpdated());
            writeDescriptions(row, document->Properties());
            return;
        }
    }
}

} // namespace

void writeDesignRow(AnalysisContext& context, const DesignRow& design) {
    const access::Designed& object = need(context.CurDesign);
    increment(context.ObjectNo);
    Recordset& row = need(context.WorkRs1);
    row.AddNew();
    row.Collect(u"objectNo", std::int64_t{context.ObjectNo});
    for (const DesignField& field : design.fields) {
        row.Collect(field.field, valueFor(field, object(field.property)));
    }
    row.Collect(u"Midasi", std::int64_t{context.*design.option});
    writeEvents(row, object.Properties(), design);
    writeDocument(context, row, design);
    row.Update();
}

} // namespace relvane
