// For tests that hold for every format that the builder of samples writes:
//
//     class Thing : public testing::TestWithParam<samples::FileFormat> {};
//     INSTANTIATE_TEST_SUITE_P(Formats, Thing, test::everyFormat, test::formatName);
#pragma once

#include <gtest/gtest.h>

#include "sample_builder/database_writer.h"
#include "support/samples.h"

namespace relvane::test {

inline const auto everyFormat =
    testing::Values(samples::FileFormat::Access97, samples::FileFormat::Access2000);

inline std::string formatName(const testing::TestParamInfo<samples::FileFormat>& format) {
    return format.param == samples::FileFormat::Access97 ? "Access97" : "Access2000";
}

// A sample of the build, as Access of that format would have saved it.
inline std::filesystem::path ownSample(const std::string& name, samples::FileFormat format) {
    return ownSample(name + (format == samples::FileFormat::Access97 ? ".mdb" : "2000.mdb"));
}

} // namespace relvane::test
