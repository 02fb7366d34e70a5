// Drives the printing of saved queries and the search for their fields with arbitrary rows. The input is text, so that
// its seeds can be read:
//
//     a line is a row: attribute and flag as one character each ("0" is 0, ":" 10), "|", Name1, "|", Name2, "|",
//     Expression; a line with "~" alone begins another query
//
// Queries are named "0", "1" and so on; besides them there is the table "T" with the fields "A" and "B".
#include "jet/query_fields.h"
#include "jet/query_sql.h"
#include "platform/runtime_error.h"

namespace {

using namespace relvane;
using namespace relvane::jet;

class Queries : public QuerySources {
public:
    explicit Queries(TextView input) {
        std::vector<QueryRow> rows;
        for (std::size_t begin = 0; begin <= input.size();) {
            const std::size_t end = std::min(input.find(u'\n', begin), input.size());
            const TextView line = input.substr(begin, end - begin);
            if (line == u"~") {
                saved_.push_back({std::move(rows), 0});
                rows.clear();
            } else if (!line.empty()) {
                rows.push_back(rowOf(line));
            }
            begin = end + 1;
        }
        saved_.push_back({std::move(rows), 0});
    }

    const std::vector<SavedQuery>& all() const { return saved_; }

    std::optional<std::vector<QueryField>> fieldsOfTable(TextView name) override {
        if (name != u"T") {
            return std::nullopt;
        }
        FieldOrigin origin;
        origin.sourceField = u"A";
        origin.sourceTable = u"T";
        const auto shared = std::make_shared<const FieldOrigin>(origin);
        return std::vector<QueryField>{{u"A", shared}, {u"B", shared}};
    }

    std::optional<SavedQuery> query(TextView name) override {
        const std::size_t number =
            name.size() == 1 ? static_cast<std::size_t>(name[0] - u'0') : saved_.size();
        return number < saved_.size() ? std::optional(saved_[number]) : std::nullopt;
    }

private:
    static QueryRow rowOf(TextView line) {
        QueryRow row;
        row.attribute = (line[0] - u'0') & 15;
        if (line.size() > 1) {
            row.flag = line[1] - u'0';
        }
        std::optional<Text>* const texts[] = {&row.name1, &row.name2, &row.expression};
        std::size_t at = line.find(u'|');
        for (std::optional<Text>* text : texts) {
            if (at == TextView::npos) {
                break;
            }
            const std::size_t end = line.find(u'|', at + 1);
            *text = Text(line.substr(at + 1, end == TextView::npos ? end : end - at - 1));
            at = end;
        }
        return row;
    }

    std::vector<SavedQuery> saved_;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Text input;
    for (std::size_t i = 0; i < size; ++i) {
        input += static_cast<char16_t>(data[i] < 0x80 ? data[i] : 0x3000 + data[i]); // the rest is Japanese
    }
    Queries queries(input);
    for (const SavedQuery& query : queries.all()) {
        for (const SqlDialect dialect : {SqlDialect::Jet3, SqlDialect::Jet4}) {
            skipErrors([&] { querySql(query.rows, query.catalogueFlags, dialect); });
        }
        skipErrors([&] { queryConnect(query.rows, query.catalogueFlags); });
        hasAmbiguousOuterJoins(query.rows);
    }
    QueryFieldResolver resolver(queries);
    for (char16_t name = u'0'; name <= u'9'; ++name) {
        skipErrors([&] { resolver.fields(TextView(&name, 1)); });
    }
    return 0;
}
