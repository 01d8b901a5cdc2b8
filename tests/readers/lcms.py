"""Colour profiles of documents, applied by LittleCMS (Debian's liblcms2-2) through its C interface."""
import ctypes
import struct

import numpy

_library = ctypes.CDLL("liblcms2.so.2")
_library.cmsOpenProfileFromMem.restype = ctypes.c_void_p
_library.cmsOpenProfileFromMem.argtypes = [ctypes.c_char_p, ctypes.c_uint32]
_library.cmsCreateMultiprofileTransform.restype = ctypes.c_void_p
_library.cmsCreateMultiprofileTransform.argtypes = [
    ctypes.POINTER(ctypes.c_void_p), ctypes.c_uint32, ctypes.c_uint32, ctypes.c_uint32,
    ctypes.c_uint32, ctypes.c_uint32]
_library.cmsDoTransform.argtypes = [ctypes.c_void_p, ctypes.c_void_p, ctypes.c_void_p,
                                    ctypes.c_uint32]
_library.cmsDeleteTransform.argtypes = [ctypes.c_void_p]
_library.cmsCloseProfile.argtypes = [ctypes.c_void_p]

# Three interleaved floats, RGB (TYPE_RGB_FLT of lcms2.h).
_RGB_FLOAT = (1 << 22) | (4 << 16) | (3 << 3) | 4
_PERCEPTUAL = 0
# The profile as it stands, and not a coarser table that the library makes of it.
_EXACTLY = 0x0100 | 0x0040  # cmsFLAGS_NOOPTIMIZE, cmsFLAGS_NOCACHE


def _with_aligned_curves(profile):
    """A table with an odd number of points ends two bytes before a multiple of four. LittleCMS wants
    the curves behind it there; the tag's size, as documents have it, leaves no room for that."""
    start, size = struct.unpack(">II", next(profile[at + 4:at + 12]
                                            for at in range(132, 180, 12)
                                            if profile[at:at + 4] == b"A2B0"))
    table, curves = struct.unpack(">II", profile[start + 24:start + 32])
    if table == 0 or curves % 4 == 0:
        return profile
    tag = bytearray(profile[start:start + size])
    tag[28:32] = struct.pack(">I", curves + 2)
    tag[curves:curves] = bytes(2)
    head = bytearray(profile[:start])
    head[:4] = struct.pack(">I", len(profile) + 2)
    at = profile.index(b"A2B0", 132)
    head[at + 8:at + 12] = struct.pack(">I", size + 2)
    return bytes(head + tag)


def apply_device_link(profile, pixels):
    """What the profile (bytes) makes of an array of RGB, 1.0 being white."""
    profile = _with_aligned_curves(profile)
    handle = _library.cmsOpenProfileFromMem(profile, len(profile))
    if not handle:
        raise ValueError("LittleCMS finds no profile")
    chain = (ctypes.c_void_p * 1)(handle)
    transform = _library.cmsCreateMultiprofileTransform(chain, 1, _RGB_FLOAT, _RGB_FLOAT,
                                                        _PERCEPTUAL, _EXACTLY)
    _library.cmsCloseProfile(handle)
    if not transform:
        raise ValueError("LittleCMS makes no transform of the profile")
    given = numpy.ascontiguousarray(pixels, numpy.float32)
    made = numpy.empty_like(given)
    _library.cmsDoTransform(transform, given.ctypes.data, made.ctypes.data, given.size // 3)
    _library.cmsDeleteTransform(transform)
    return made
