// What every effect keeps in a scene file.
#include <sfx.h>

namespace {

// Empty: the user switched the effect off.
constexpr USHORT switchedOffChunk = 0x0100;

}  // namespace

IOResult SpecialFX::Save(ISave* isave) {
    if (TestAFlag(A_ATMOS_DISABLED)) {
        isave->BeginChunk(switchedOffChunk);
        isave->EndChunk();
    }
    return IO_OK;
}

IOResult SpecialFX::Load(ILoad* iload) {
    while (iload->OpenChunk() == IO_OK) {
        if (iload->CurChunkID() == switchedOffChunk) SetAFlag(A_ATMOS_DISABLED);
        iload->CloseChunk();
    }
    return IO_OK;
}
