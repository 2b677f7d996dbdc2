#include <gmock/gmock.h>

#include <array>
#include <cstdint>

#include "wrapper/FgIxWrapper.h"

namespace quillon {
namespace {

using ::testing::ElementsAre;

TEST(FieldCache, MovesOneIntegerByItsIndex) {
    std::array<std::uint32_t, 4> cache = {10, 11, 12, 13};
    const FieldParameterInt_s written = {99, 2};
    FgIxWrapper::setFieldCache(cache.data(), &written);
    EXPECT_THAT(cache, ElementsAre(10, 11, 99, 13));
    FieldParameterInt_s read = {0, 3};
    FgIxWrapper::getFieldCache(cache.data(), &read);
    EXPECT_EQ(read.value, 13U);
    EXPECT_EQ(read.index, 3U);
}

TEST(FieldCache, MovesOneDoubleByItsIndex) {
    std::array<double, 3> cache = {0.0, 0.1, 0.2};
    const FieldParameterDouble_s written = {9.5, 1};
    FgIxWrapper::setFieldCache(cache.data(), &written);
    EXPECT_THAT(cache, ElementsAre(0.0, 9.5, 0.2));
    FieldParameterDouble_s read = {0.0, 2};
    FgIxWrapper::getFieldCache(cache.data(), &read);
    EXPECT_EQ(read.value, 0.2);
}

TEST(FieldCache, MovesARunOf32BitElements) {
    for (const FgParamTypes type : {FgTypeInt32, FgTypeUInt32}) {
        std::array<std::uint32_t, 5> cache = {10, 11, 12, 13, 14};
        std::array<std::uint32_t, 2> values = {98, 99};
        const FieldParameterAccess access = {type, 1, 2, values.data()};
        FgIxWrapper::setFieldCache(cache.data(), &access);
        EXPECT_THAT(cache, ElementsAre(10, 98, 99, 13, 14));
        std::array<std::uint32_t, 3> read = {};
        const FieldParameterAccess back = {type, 2, 3, read.data()};
        FgIxWrapper::getFieldCache(cache.data(), &back);
        EXPECT_THAT(read, ElementsAre(99, 13, 14));
    }
}

TEST(FieldCache, MovesARunOf64BitElements) {
    for (const FgParamTypes type : {FgTypeInt64, FgTypeUInt64, FgTypeDouble}) {
        std::array<std::uint64_t, 4> cache = {10, 11, 12, 13};
        std::array<std::uint64_t, 2> values = {98, 99};
        const FieldParameterAccess access = {type, 2, 2, values.data()};
        FgIxWrapper::setFieldCache(cache.data(), &access);
        EXPECT_THAT(cache, ElementsAre(10, 11, 98, 99));
        std::array<std::uint64_t, 2> read = {};
        const FieldParameterAccess back = {type, 1, 2, read.data()};
        FgIxWrapper::getFieldCache(cache.data(), &back);
        EXPECT_THAT(read, ElementsAre(11, 98));
    }
}

TEST(FieldCache, MovesNothingOfAnyOtherType) {
    for (const int type : {0, 6, 22, 4096, 4098, -1}) {
        std::array<std::uint32_t, 2> cache = {10, 11};
        std::array<std::uint32_t, 2> values = {98, 99};
        const FieldParameterAccess access = {static_cast<FgParamTypes>(type), 0, 2, values.data()};
        FgIxWrapper::setFieldCache(cache.data(), &access);
        EXPECT_THAT(cache, ElementsAre(10, 11)) << type;
        FgIxWrapper::getFieldCache(cache.data(), &access);
        EXPECT_THAT(values, ElementsAre(98, 99)) << type;
    }
}

TEST(FieldCache, MovesNothingForACountOfZero) {
    std::array<std::uint32_t, 2> cache = {10, 11};
    const FieldParameterAccess access = {FgTypeUInt32, 1, 0, nullptr};
    FgIxWrapper::setFieldCache(cache.data(), &access);
    FgIxWrapper::getFieldCache(cache.data(), &access);
    EXPECT_THAT(cache, ElementsAre(10, 11));
}

TEST(FieldCache, ANullRecordDoesNothing) {
    std::array<std::uint32_t, 2> cache = {10, 11};
    FgIxWrapper::setFieldCache(cache.data(), static_cast<const FieldParameterInt_s*>(nullptr));
    FgIxWrapper::setFieldCache(cache.data(), static_cast<const FieldParameterDouble_s*>(nullptr));
    FgIxWrapper::setFieldCache(cache.data(), static_cast<const FieldParameterAccess*>(nullptr));
    FgIxWrapper::getFieldCache(cache.data(), static_cast<FieldParameterInt_s*>(nullptr));
    FgIxWrapper::getFieldCache(cache.data(), static_cast<FieldParameterDouble_s*>(nullptr));
    FgIxWrapper::getFieldCache(cache.data(), static_cast<const FieldParameterAccess*>(nullptr));
    EXPECT_THAT(cache, ElementsAre(10, 11));
}

}  // namespace
}  // namespace quillon
