// Mattes and passes as the second reader sees them: the same tree as the first, and mattes by their
// samples. The environment's VELTRANE names the command. Without `npm ci` in this folder the test is
// skipped (exit status 77).
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
const STILL = path.resolve(__dirname, "../../examples/still.exr");
const SCENE = path.resolve(__dirname, "../../examples/still.scene.json");
const FIRST_READER = path.join(__dirname, "passes_test.py");

initializeCanvas(
    () => assert.fail("the reader asked for a canvas"),
    (width, height) => ({ width, height, data: new Uint8ClampedArray(width * height * 4) }));

const folder = fs.mkdtempSync(path.join(os.tmpdir(), "veltrane-passes-"));
after(() => fs.rmSync(folder, { recursive: true }));

function save(...more) {
    const document = path.join(folder, "still.psd");
    execFileSync(VELTRANE, ["save", STILL, "-o", document, "-q", "--all", "--set", "bitDepth=8",
        ...more]);
    return document;
}

function read(document) {
    return readPsd(fs.readFileSync(document),
        { useImageData: true, skipCompositeImageData: true, skipThumbnail: true });
}

/** Names from the top down, a set as a pair of its name and what is in it. */
function tree(layers) {
    return [...layers].reverse().map((layer) =>
        layer.children ? [layer.name, tree(layer.children)] : layer.name);
}

function sameTree(document) {
    const first = JSON.parse(execFileSync("/usr/bin/python3", [FIRST_READER, "--tree", document],
        { encoding: "utf-8" }));
    const second = tree(read(document).children);
    assert.deepEqual(second, first);
    return second;
}

test("both readers see the same tree of passes and mattes", () => {
    const names = sameTree(save());
    const objects = names.find((each) => each[0] === "Objects")[1];
    assert.ok(objects.includes("Würfel"));
    assert.deepEqual(objects.find((each) => each[0] === "Pot"), ["Pot", ["Lid"]]);
});

test("both readers see the same tree of a scene's layers", () => {
    // Neither reader knows the camera's data.
    const names = sameTree(save("--scene", SCENE, "--set", "embedCameraInfo=false"));
    assert.ok(names.some((each) => each[0] === "Scene Layers"));
});

test("both readers see the same matte", () => {
    const document = save();
    const objects = read(document).children.find((layer) => layer.name === "Objects");
    const { data } = objects.children.find((layer) => layer.name === "Würfel").imageData;
    const matte = Buffer.from(data.filter((_, index) => index % 4 === 3));
    const first = execFileSync("/usr/bin/python3",
        [FIRST_READER, "--matte", document, "Objects", "Würfel"], { maxBuffer: 1 << 24 });
    assert.ok(first.includes(255));
    assert.ok(matte.equals(first));
});
