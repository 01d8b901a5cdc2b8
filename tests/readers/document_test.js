// Documents of the built command, read by a second reader that shares no code with it or with the
// first: npm's ag-psd. expected.py says what the pixels must be. The environment's VELTRANE names
// the command. Without `npm ci` in this folder the test is skipped (exit status 77).
"use strict";

const assert = require("node:assert/strict");
const { execFileSync } = require("node:child_process");
const fs = require("node:fs");
const os = require("node:os");
const path = require("node:path");
const { after, test } = require("node:test");

if (!fs.existsSync(path.join(__dirname, "node_modules", "ag-psd"))) {
    console.log("skipped: ag-psd is not installed; run `npm ci` in tests/readers");
    process.exit(77);
}
const { initializeCanvas, readPsd } = require("ag-psd");

const VELTRANE = process.env.VELTRANE;
const FRAME = path.resolve(__dirname, "../../examples/anim.0001.exr");
const WIDTH = 320, HEIGHT = 180, SAMPLES = WIDTH * HEIGHT;
const FULL = { 8: 255, 16: 65535, 32: 1 };
const STYLES = { transparency: 0, opaque: 1, mask: 2, disabledMask: 3, alphaChannel: 4 };

// The reader wants a canvas only for what is neither read nor asked here.
initializeCanvas(
    () => assert.fail("the reader asked for a canvas"),
    (width, height) => ({ width, height, data: new Uint8ClampedArray(width * height * 4) }));

const folder = fs.mkdtempSync(path.join(os.tmpdir(), "veltrane-readers-"));
after(() => fs.rmSync(folder, { recursive: true }));

/**
 * A large 8-bit document as this reader wants it. The global mask's length, alone in the section
 * that holds it, is eight bytes wide in our documents, where this reader looks for four.
 */
function withNarrowGlobalMaskLength(document) {
    let at = 26;                                // after the header
    at += 4 + document.readUInt32BE(at);        // the colour mode data
    at += 4 + document.readUInt32BE(at);        // the image resources
    const section = at;
    at += 8;
    at += 8 + Number(document.readBigUInt64BE(at));  // the layers
    assert.equal(document.readBigUInt64BE(at), 14n);
    document.writeBigUInt64BE(document.readBigUInt64BE(section) - 4n, section);
    return Buffer.concat([document.subarray(0, at), document.subarray(at + 4)]);
}

/** Saves the frame with these settings and gives the document as the reader sees it. */
function save(settings, name = "document.psd") {
    const document = path.join(folder, name);
    const all = { createRenderElementLayers: 0, embedCameraInfo: 0, ...settings };
    execFileSync(VELTRANE, ["save", FRAME, "-o", document, "-q", "--gamma", "off",
        ...Object.entries(all).flatMap(([key, value]) => ["--set", `${key}=${value}`])]);
    const bytes = fs.readFileSync(document);
    const isLarge8 = name.endsWith(".psb") && settings.bitDepth === 8;
    return readPsd(isLarge8 ? withNarrowGlobalMaskLength(bytes) : bytes, {
        strict: true,
        throwForMissingFeatures: true,
        useImageData: true,
        // This reader knows no merged alpha above 8 bits.
        skipCompositeImageData: settings.bitDepth !== 8,
    });
}

/** Red, green, blue and alpha of the frame in 8 bits. */
const planes = (() => {
    const bytes = execFileSync("/usr/bin/python3", [path.join(__dirname, "expected.py"), FRAME],
        { maxBuffer: 8 * SAMPLES });
    assert.equal(bytes.length, 4 * SAMPLES);
    return [0, 1, 2, 3].map((index) => bytes.subarray(index * SAMPLES, (index + 1) * SAMPLES));
})();

/** Fails at the first sample of an RGBA picture's component that isn't the plane's. */
function assertComponent(picture, component, wanted, title) {
    for (let index = 0; index < SAMPLES; ++index) {
        const found = picture.data[index * 4 + component];
        if (found !== wanted(index)) {
            assert.fail(`${title}: sample ${index} is ${found}, not ${wanted(index)}`);
        }
    }
}

function assertColors(picture, title) {
    for (const component of [0, 1, 2]) {
        assertComponent(picture, component, (index) => planes[component][index],
            `${title}, component ${component}`);
    }
}

function testDocument(style, bitDepth, large) {
    const outputRenderAs = STYLES[style];
    // Both values with every value of the others, in half as many documents.
    const compression = (outputRenderAs + large + (bitDepth === 16)) % 2;
    const title = `${style}, ${bitDepth} bits, ${large ? "PSB" : "PSD"}, ` +
        (compression ? "compressed" : "raw");
    test(`ag-psd reads: ${title}`, () => {
        const document = save({ outputRenderAs, bitDepth, compression },
            large ? "document.psb" : "document.psd");
        assert.deepEqual([document.width, document.height], [WIDTH, HEIGHT]);
        assert.equal(document.bitsPerChannel, bitDepth);
        assert.deepEqual(document.imageResources.alphaChannelNames,
            style === "alphaChannel" ? ["Transparency", "Render Alpha"] : ["Transparency"]);
        assert.deepEqual(document.children.map((layer) => layer.name), ["Render"]);

        const [layer] = document.children;
        assert.deepEqual([layer.left, layer.top, layer.right, layer.bottom],
            [0, 0, WIDTH, HEIGHT]);
        assert.deepEqual([layer.hidden, layer.opacity, layer.blendMode], [false, 1, "normal"]);
        if (style !== "transparency") {
            assertComponent(layer.imageData, 3, () => FULL[bitDepth], "alpha");
        }

        const masked = style === "mask" || style === "disabledMask";
        assert.equal(layer.mask !== undefined, masked);
        if (masked) {
            const { disabled, left, top, right, bottom } = layer.mask;
            assert.equal(disabled ?? false, style === "disabledMask");
            assert.deepEqual([left, top, right, bottom], [0, 0, WIDTH, HEIGHT]);
        }
        if (bitDepth !== 8) return;

        assertColors(layer.imageData, "the layer");
        if (style === "transparency") {
            assertComponent(layer.imageData, 3, (index) => planes[3][index], "alpha");
        }
        if (masked) {
            assertComponent(layer.mask.imageData, 0, (index) => planes[3][index], "the mask");
        }
    });
}

for (const style of Object.keys(STYLES)) {
    for (const bitDepth of [8, 16, 32]) {
        for (const large of [0, 1]) testDocument(style, bitDepth, large);
    }
}

test("ag-psd reads: a merged image that is white on purpose", () => {
    const document = save({ bitDepth: 8, compatibility: 0 });
    for (const component of [0, 1, 2]) {
        assertComponent(document.imageData, component, () => 255, `component ${component}`);
    }
});
