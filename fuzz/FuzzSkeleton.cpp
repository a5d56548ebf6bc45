// The skeleton reader and both position computations over any text, on
// tables that keep what earlier inputs left in them, as the dialogs' do.
#include "FuzzSupport.h"
#include "document/Skeleton.h"

#include <memory>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const auto tables = std::make_unique<quarle::SkeletonTables>();
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    for (const auto variant :
         {quarle::SkeletonVariant::Attachment, quarle::SkeletonVariant::Controller}) {
        quarle::StartSkeleton(*tables, variant);
        quarle::ReadSkeletonText(*tables, text, variant);
        quarle::PlaceBones(*tables, variant);
        const double scale = quarle::SkeletonScale(*tables, 2655);
        for (const quarle::BoneRec& bone : tables->Bones) {
            quarle::SkeletonScreen(*tables, scale, bone.X);
        }
    }
    return 0;
}
