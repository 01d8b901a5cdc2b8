"""A document's layers put together as a paint application shows them, which its merged image should
look like. psd-tools reads the layers; the rest is numpy in floating point, and LittleCMS for the
profiles of colour lookups.

It knows what veltrane writes: picture layers, fills, layer masks, sets that pass through, the blend
modes below, and colour lookups over all that is below them. Anything else is refused.
"""
import numpy
from psd_tools.constants import BlendMode, Tag

import lcms

FULL = {8: 255, 16: 65535, 32: 1}
SAMPLES = {8: ">u1", 16: ">u2", 32: ">f4"}

BLENDS = {
    BlendMode.NORMAL: lambda below, above: above,
    BlendMode.MULTIPLY: lambda below, above: below * above,
    BlendMode.LINEAR_DODGE: lambda below, above: numpy.minimum(below + above, 1),
}


def profile_of(layer):
    """The device link of a colour lookup layer."""
    descriptor = layer._record.tagged_blocks.get_data(Tag.COLOR_LOOKUP)
    return bytes(descriptor[b"profile"].value)


def fill_of(layer):
    """The colour of a fill, 1.0 being white."""
    color = layer._record.tagged_blocks.get_data(Tag.SOLID_COLOR_SHEET_SETTING)[b"Clr "]
    return numpy.array([float(color[key].value) / 255 for key in (b"Rd  ", b"Grn ", b"Bl  ")])


class Composite:
    """Straight colours and their alpha, 1.0 being white and opaque."""

    def __init__(self, image):
        self.header = image._record.header
        size = (self.header.height, self.header.width)
        self.color = numpy.zeros((*size, 3))
        self.alpha = numpy.zeros(size)
        self._add_layers(image)

    def _plane(self, layer, wanted):
        """None for a channel that the layer lacks."""
        header = self.header
        for info, data in zip(layer._record.channel_info, layer._channels):
            if info.id == wanted:
                samples = numpy.frombuffer(
                    data.get_data(header.width, header.height, header.depth, header.version),
                    SAMPLES[header.depth])
                return samples.reshape(header.height, header.width) / FULL[header.depth]
        return None

    def _mask(self, layer):
        mask = layer._record.mask_data
        if mask is None or mask.flags.mask_disabled:
            return numpy.ones_like(self.alpha)
        if mask.right == mask.left:
            return numpy.full_like(self.alpha, mask.background_color / 255)
        return self._plane(layer, -2)

    def _add_layers(self, layers):
        for layer in layers:  # psd-tools counts from the bottom
            if not layer.visible:
                continue
            if layer._record.clipping:
                raise NotImplementedError(f"{layer.name} is clipped")
            if layer.is_group():
                if layer.blend_mode != BlendMode.PASS_THROUGH or layer._record.mask_data:
                    raise NotImplementedError(f"{layer.name} doesn't pass through")
                self._add_layers(layer)
            else:
                self._add(layer)

    def _add(self, layer):
        blocks = layer._record.tagged_blocks
        mask = self._mask(layer)
        if Tag.COLOR_LOOKUP in blocks:
            changed = lcms.apply_device_link(profile_of(layer), self.color)
            self.color += (changed - self.color) * mask[..., None]
        elif Tag.SOLID_COLOR_SHEET_SETTING in blocks:
            self._blend(layer, numpy.broadcast_to(fill_of(layer), self.color.shape), mask)
        else:
            color = numpy.dstack([self._plane(layer, channel) for channel in range(3)])
            alpha = self._plane(layer, -1)
            self._blend(layer, color, mask if alpha is None else mask * alpha)

    def _blend(self, layer, color, alpha):
        """PDF 1.7, 11.3.6: the basic compositing formula."""
        blend = BLENDS[layer.blend_mode]
        united = alpha + self.alpha - alpha * self.alpha
        share = numpy.divide(alpha, united, out=numpy.zeros_like(united), where=united > 0)
        mixed = ((1 - self.alpha)[..., None] * color +
                 self.alpha[..., None] * blend(self.color, color))
        self.color = (1 - share)[..., None] * self.color + share[..., None] * mixed
        self.alpha = united
