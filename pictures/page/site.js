// ---- the site in three dimensions ----
//
// All entities are one mesh. What is seen of it stands in three lists of points, for opaque faces, faces that shine
// through, and edges, and how it looks in a colour of each point: a change of time sends those again, and everything is
// drawn in three strokes.

const thousandths = 0.001;
const leastOpacity = 2, opaque = 253;
const fewTriangles = 40, coarseCells = 3;

const faceShaders = {
    vertexShader: `
        attribute vec4 look;
        varying vec4 color;
        varying vec3 seen;
        void main()
        {
            color = look;
            vec4 at = modelViewMatrix * vec4(position, 1.0);
            seen = at.xyz;
            gl_Position = projectionMatrix * at;
        }`,
    fragmentShader: `
        uniform vec3 sun;
        uniform float headLight;
        varying vec4 color;
        varying vec3 seen;
        void main()
        {
            vec3 normal = normalize(cross(dFdx(seen), dFdy(seen)));
            float light = 0.62 + 0.30 * max(dot(normal, sun), 0.0) + headLight * 0.12 * abs(normal.z);
            gl_FragColor = vec4(color.rgb * min(light, 1.0), color.a);
        }`,
};
const edgeShaders = {
    vertexShader: `
        attribute vec4 look;
        varying vec4 color;
        void main()
        {
            color = vec4(look.rgb * 0.3, look.a * 0.8);
            gl_Position = projectionMatrix * modelViewMatrix * vec4(position, 1.0);
        }`,
    fragmentShader: `
        varying vec4 color;
        void main() { gl_FragColor = color; }`,
};
// Draws numbers in place of colours, to find what is under the pointer.
const numberShaders = {
    vertexShader: `
        attribute float number;
        varying float id;
        void main()
        {
            id = number + 1.0;
            gl_Position = projectionMatrix * modelViewMatrix * vec4(position, 1.0);
        }`,
    fragmentShader: `
        varying float id;
        void main()
        {
            float whole = floor(id + 0.5);
            gl_FragColor = vec4(mod(whole, 256.0), mod(floor(whole / 256.0), 256.0), floor(whole / 65536.0), 255.0) / 255.0;
        }`,
};

// Gives each entity its form, and where its points, corners and edges begin among all; answers how many there are.
function layOutGeometry()
{
    const shapes = plan.shapes.map(([points, triangles]) =>
    {
        const edges = edgesOf(points, triangles);
        return { points, triangles, edges, pointCount: points.length / 3, coarse: coarseForm(points, triangles, edges) };
    });
    const counts = { points: 0, corners: 0, edges: 0, coarseCorners: 0, coarseEdges: 0 };
    for (const entity of entities)
    {
        const shape = entity.form = shapes[entity.shape];
        entity.first = { ...counts };
        counts.points += shape.pointCount;
        counts.corners += shape.triangles.length;
        counts.edges += shape.edges.length;
        counts.coarseCorners += shape.coarse.triangles.length;
        counts.coarseEdges += shape.coarse.edges.length;
    }
    return counts;
}
// Positions among all points, form after form.
function gathered(count, listOf)
{
    const all = new Uint32Array(count);
    let at = 0;
    for (const entity of entities)
        for (const each of listOf(entity.form)) all[at++] = entity.first.points + each;
    return all;
}

// A round form with fewer corners, over the same points: those that lie close together are taken for one.
function coarseForm(points, triangles, edges)
{
    if (triangles.length < 3 * fewTriangles) return { triangles, edges };
    const low = [0, 1, 2].map(axis => Infinity), high = [0, 1, 2].map(axis => -Infinity);
    points.forEach((value, each) =>
    {
        low[each % 3] = Math.min(low[each % 3], value);
        high[each % 3] = Math.max(high[each % 3], value);
    });
    const first = new Map(), standsFor = [];
    for (let point = 0; point < points.length / 3; ++point)
    {
        const cell = [0, 1, 2].map(axis =>
            Math.round((points[3 * point + axis] - low[axis]) / Math.max(1, high[axis] - low[axis]) * coarseCells)).join();
        if (!first.has(cell)) first.set(cell, point);
        standsFor.push(first.get(cell));
    }
    const kept = (list, size) =>
    {
        const all = [];
        for (let at = 0; at < list.length; at += size)
        {
            const corners = list.slice(at, at + size).map(point => standsFor[point]);
            if (new Set(corners).size === size) all.push(...corners);
        }
        return all;
    };
    return { triangles: kept(triangles, 3), edges: kept(edges, 2) };
}

// One side of the stage: the entities as they look there.
class Picture
{
    constructor(site, counts)
    {
        this.site = site;
        this.words = new Uint32Array(entities.length);
        this.colors = new Uint32Array(counts.points);
        this.look = new THREE.BufferAttribute(new Uint8Array(this.colors.buffer), 4, true);
        const list = count =>
        {
            const geometry = new THREE.BufferGeometry();
            geometry.setAttribute("position", site.positions);
            geometry.setAttribute("look", this.look);
            geometry.setAttribute("number", site.numbers);
            geometry.setIndex(new THREE.BufferAttribute(new Uint32Array(count), 1));
            geometry.setDrawRange(0, 0);
            return { geometry, used: 0 };
        };
        this.lists = { opaque: list(counts.corners), translucent: list(counts.corners), edges: list(counts.edges) };
    }

    // Takes over how each entity looks, and whether in its coarse form; whether anything changed.
    show(words, isCoarse)
    {
        let hasChanged = false, isSeenChanged = this.isCoarse !== isCoarse;
        this.isCoarse = isCoarse;
        for (const entity of entities)
        {
            const word = words[entity.number], before = this.words[entity.number];
            if (word === before) continue;
            hasChanged = true;
            const opacity = word >>> 24, opacityBefore = before >>> 24;
            if (opacity !== opacityBefore) isSeenChanged = true;
            this.words[entity.number] = word;
            this.colors.fill(word, entity.first.points, entity.first.points + entity.form.pointCount);
        }
        if (hasChanged) this.look.needsUpdate = true;
        if (isSeenChanged) this.listSeen();
        return hasChanged || isSeenChanged;
    }
    listSeen()
    {
        const { opaque: solid, translucent, edges } = this.lists;
        for (const list of [solid, translucent, edges]) list.used = 0;
        const append = (list, from, first, count) =>
        {
            list.geometry.index.array.set(from.subarray(first, first + count), list.used);
            list.used += count;
        };
        for (const entity of entities)
        {
            const opacity = this.words[entity.number] >>> 24;
            if (opacity <= leastOpacity) continue;
            const { form, first } = entity, faces = opacity < opaque ? translucent : solid;
            if (this.isCoarse)
            {
                append(faces, this.site.coarseCorners, first.coarseCorners, form.coarse.triangles.length);
                append(edges, this.site.coarseEdges, first.coarseEdges, form.coarse.edges.length);
                continue;
            }
            append(faces, this.site.corners, first.corners, form.triangles.length);
            append(edges, this.site.edges, first.edges, form.edges.length);
        }
        for (const { geometry, used } of [solid, translucent, edges])
        {
            geometry.setDrawRange(0, used);
            geometry.index.needsUpdate = true;
        }
    }
}

// Pairs of points between faces that meet at an angle.
function edgesOf(points, triangles)
{
    const normals = [], sides = new Map();
    const at = point => new THREE.Vector3(points[3 * point], points[3 * point + 1], points[3 * point + 2]);
    for (let first = 0; first < triangles.length; first += 3)
    {
        const [a, b, c] = triangles.slice(first, first + 3);
        const from = at(a);
        const normal = at(b).sub(from).cross(at(c).sub(from)).normalize();
        normals.push(normal);
        for (const [start, end] of [[a, b], [b, c], [c, a]])
        {
            const key = `${Math.min(start, end)} ${Math.max(start, end)}`;
            if (!sides.has(key)) sides.set(key, { start, end, faces: [] });
            sides.get(key).faces.push(normals.length - 1);
        }
    }
    const edges = [];
    for (const { start, end, faces } of sides.values())
        if (faces.length !== 2 || normals[faces[0]].dot(normals[faces[1]]) < 0.85) edges.push(start, end);
    return edges;
}

// How finely the site is drawn, from the best: pixels of the picture to a pixel of the screen, whether with edges,
// and whether round things have few corners.
// At rest it is the best; while things move, the best that is fast enough on this machine.
const qualities = [
    { ratio: 2, edges: true, isCoarse: false },
    { ratio: 1, edges: true, isCoarse: false },
    { ratio: 1, edges: true, isCoarse: true },
    { ratio: 1, edges: false, isCoarse: true },
];
// Milliseconds of a frame that are too slow or fast enough for more, and how long to wait before more is tried again.
const tooSlow = 30, fast = 18, patience = 10000;

class Pace
{
    constructor()
    {
        this.moving = 1;
        this.last = this.slowAt = -Infinity;
        this.times = [];
    }

    // The quality for a frame that is drawn now; `isMoving` says that others follow at once.
    next(now, isMoving)
    {
        if (!isMoving) return qualities[0];
        const time = now - this.last;
        this.last = now;
        if (time < 500) this.times.push(time);
        if (this.times.length >= 6)
        {
            const middle = this.times.sort((a, b) => a - b)[3];
            this.times = [];
            if (middle > tooSlow)
            {
                this.moving = Math.min(this.moving + 1, qualities.length - 1);
                this.slowAt = now;
            }
            else if (middle < fast && now - this.slowAt > patience) this.moving = Math.max(this.moving - 1, 0);
        }
        return qualities[this.moving];
    }
}

class Site
{
    constructor(canvas)
    {
        this.canvas = canvas;
        this.renderer = new THREE.WebGLRenderer({ canvas, antialias: false });
        this.renderer.setScissorTest(true);
        this.renderer.autoClear = false;
        this.background = new THREE.Color(css(plan.settings.background));
        this.camera = new THREE.PerspectiveCamera(40, 1, 1, 1000);
        this.camera.up.set(0, 0, 1);
        this.controls = new THREE.OrbitControls(this.camera, canvas);
        this.controls.enableKeys = false;
        this.controls.maxPolarAngle = Math.PI * 0.495;
        this.controls.screenSpacePanning = true;
        let isHeld = false;
        this.controls.addEventListener("start", () => { isHeld = true; });
        this.controls.addEventListener("end", () => { isHeld = false; });
        this.controls.addEventListener("change", () =>
        {
            if (isHeld) this.fitted = null;
            this.onChange();
        });
        this.onChange = () => {};
        this.half = plan.half.map(each => Math.max(each * thousandths, 0.5));
        this.radius = Math.hypot(...this.half);
        this.hasBaseline = false;
        this.quality = qualities[0];
        this.build();
        this.fit();
    }

    build()
    {
        const counts = layOutGeometry();
        this.corners = gathered(counts.corners, form => form.triangles);
        this.edges = gathered(counts.edges, form => form.edges);
        this.coarseCorners = gathered(counts.coarseCorners, form => form.coarse.triangles);
        this.coarseEdges = gathered(counts.coarseEdges, form => form.coarse.edges);
        this.positions = new THREE.BufferAttribute(new Float32Array(counts.points * 3), 3);
        const numbers = new Float32Array(counts.points);
        for (const entity of entities)
            numbers.fill(entity.number, entity.first.points, entity.first.points + entity.form.pointCount);
        this.numbers = new THREE.BufferAttribute(numbers, 1);
        for (const entity of entities) this.place(entity, -1);
        this.pictures = { planned: new Picture(this, counts), baseline: new Picture(this, counts) };

        this.light = { sun: { value: new THREE.Vector3() }, headLight: { value: plan.settings.headLight ? 1 : 0 } };
        const behindEdges = { polygonOffset: true, polygonOffsetFactor: 1, polygonOffsetUnits: 1 };
        const shining = { transparent: true, depthWrite: false };
        // A placing that mirrors turns the insides of solids out.
        const isMirroring = plan.placings.some(placing => new THREE.Matrix4().fromArray(placing).determinant() < 0);
        const side = isMirroring ? THREE.DoubleSide : THREE.FrontSide;
        const material = (shaders, options) => new THREE.ShaderMaterial({
            ...shaders, uniforms: this.light, side, extensions: { derivatives: true }, ...options });
        const { opaque: solid, translucent, edges } = this.pictures.planned.lists;
        const add = (scene, object, order) =>
        {
            object.frustumCulled = false;
            object.renderOrder = order;
            scene.add(object);
            return object;
        };
        this.scene = new THREE.Scene();
        this.numberScene = new THREE.Scene();
        this.addGround(object => add(this.scene, object, 0));
        this.drawn = {
            opaque: add(this.scene, new THREE.Mesh(solid.geometry, material(faceShaders, behindEdges)), 1),
            edges: add(this.scene, new THREE.LineSegments(edges.geometry, material(edgeShaders, shining)), 2),
            translucent: add(this.scene, new THREE.Mesh(translucent.geometry, material(faceShaders, { ...behindEdges, ...shining })), 3),
        };
        const numbering = material(numberShaders, {});
        this.numbered = {
            opaque: add(this.numberScene, new THREE.Mesh(solid.geometry, numbering), 1),
            translucent: add(this.numberScene, new THREE.Mesh(translucent.geometry, numbering), 2),
        };
    }

    // A grid on the ground, of a round number of lengths of the page.
    addGround(add)
    {
        const reach = Math.max(this.half[0], this.half[1]) * 1.4, low = -this.half[2];
        const power = 10 ** Math.floor(Math.log10(reach / 6));
        const step = [5, 2, 1].map(times => times * power).find(each => each <= reach / 6);
        const count = Math.ceil(reach / step);
        const grid = new THREE.GridHelper(2 * count * step, 2 * count, 0xc9d1d8, 0xc9d1d8);
        grid.rotation.x = Math.PI / 2;
        grid.position.z = low - this.radius * 0.002;
        add(grid);
    }

    // Puts an entity's points where its placing says, or where it stands by itself.
    place(entity, placing)
    {
        if (entity.placing === placing) return;
        entity.placing = placing;
        this.isStale = true;
        const matrix = placing < 0 ? null : new THREE.Matrix4().fromArray(plan.placings[placing]);
        const { points } = entity.form, { at } = entity, to = this.positions.array;
        const low = new THREE.Vector3(Infinity, Infinity, Infinity), high = low.clone().negate(), point = new THREE.Vector3();
        for (let each = 0, out = entity.first.points * 3; each < points.length; each += 3, out += 3)
        {
            point.set((points[each] + at[0]) * thousandths, (points[each + 1] + at[1]) * thousandths,
                (points[each + 2] + at[2]) * thousandths);
            if (matrix) point.applyMatrix4(matrix);
            low.min(point);
            high.max(point);
            point.toArray(to, out);
        }
        entity.top = points.length ? new THREE.Vector3((low.x + high.x) / 2, (low.y + high.y) / 2, high.z) : new THREE.Vector3();
        this.positions.needsUpdate = true;
    }

    // Shows each entity as `lookOf(entity)` tells: red, green, blue and opacity, each to 255.
    show(which, lookOf)
    {
        const words = new Uint32Array(entities.length);
        for (const entity of entities)
        {
            const [red, green, blue, opacity] = lookOf(entity);
            words[entity.number] = red | green << 8 | blue << 16 | opacity << 24;
        }
        if (this.pictures[which].show(words, this.quality.isCoarse)) this.isStale = true;
    }

    // The whole site, from the south-west.
    fit()
    {
        this.resize();
        const [part] = this.parts();
        this.fitted = part.width / this.height;
        const towards = new THREE.Vector3(-0.62, -0.9, 0.6).normalize();
        const right = new THREE.Vector3().crossVectors(this.camera.up, towards).normalize();
        const up = new THREE.Vector3().crossVectors(towards, right);
        const forEachPoint = visit =>
        {
            const point = new THREE.Vector3(), { array } = this.positions;
            for (let at = 0; at < array.length; at += 3) visit(point.fromArray(array, at));
        };
        // The middle of what would be seen from far away, and then as near to it as lets all points be seen.
        const sides = [right, up].map(axis => ({ axis, low: Infinity, high: -Infinity }));
        forEachPoint(point =>
        {
            for (const side of sides)
            {
                const at = point.dot(side.axis);
                side.low = Math.min(side.low, at);
                side.high = Math.max(side.high, at);
            }
        });
        const [across, upwards] = sides.map(({ low, high }) => low <= high ? (low + high) / 2 : 0);
        const slope = Math.tan(this.camera.fov * Math.PI / 360);
        const slopeAcross = slope * part.width / this.height * 0.94, slopeUpwards = slope * 0.86;
        let distance = this.radius * 0.3;
        forEachPoint(point =>
        {
            const aside = Math.abs(point.dot(right) - across) / slopeAcross, above = Math.abs(point.dot(up) - upwards) / slopeUpwards;
            distance = Math.max(distance, point.dot(towards) + Math.max(aside, above));
        });
        this.camera.near = this.radius / 200;
        this.camera.far = this.radius * 60;
        this.controls.target.copy(right).multiplyScalar(across).addScaledVector(up, upwards);
        this.camera.position.copy(this.controls.target).addScaledVector(towards, distance);
        this.controls.minDistance = this.radius / 50;
        this.controls.maxDistance = this.radius * 20;
        this.controls.update();
        this.onChange();
    }

    turn(aside, up)
    {
        this.fitted = null;
        const offset = this.camera.position.clone().sub(this.controls.target);
        offset.applyAxisAngle(this.camera.up, aside);
        const level = Math.asin(Math.max(-1, Math.min(1, offset.z / offset.length())));
        const side = new THREE.Vector3().crossVectors(offset, this.camera.up).normalize();
        offset.applyAxisAngle(side, Math.max(0.02, Math.min(1.5, level + up)) - level);
        this.camera.position.copy(this.controls.target).add(offset);
        this.controls.update();
        this.onChange();
    }
    zoom(factor)
    {
        this.fitted = null;
        this.camera.position.sub(this.controls.target).multiplyScalar(factor).add(this.controls.target);
        this.controls.update();
        this.onChange();
    }

    // The parts of the canvas: where each begins and how wide it is, and what it shows.
    parts()
    {
        const width = this.width;
        return this.hasBaseline ? [{ left: 0, width: width / 2, picture: this.pictures.planned },
                                   { left: width / 2, width: width / 2, picture: this.pictures.baseline }]
                                : [{ left: 0, width, picture: this.pictures.planned }];
    }

    resize()
    {
        this.width = Math.max(1, this.canvas.clientWidth);
        this.height = Math.max(1, this.canvas.clientHeight);
        const shown = new THREE.Vector2();
        this.renderer.getSize(shown);
        const ratio = Math.min((window.devicePixelRatio || 1) * this.quality.ratio, 3);
        if (shown.x === this.width && shown.y === this.height && this.renderer.getPixelRatio() === ratio) return;
        this.isStale = true;
        this.renderer.setPixelRatio(ratio);
        this.renderer.setSize(this.width, this.height, false);
    }

    aim(part)
    {
        this.aspect = part.width / this.height;
        this.camera.aspect = this.aspect;
        this.camera.updateProjectionMatrix();
        this.camera.updateMatrixWorld();
        this.light.sun.value.set(-0.45, -0.35, 0.82).normalize().transformDirection(this.camera.matrixWorldInverse);
        for (const objects of [this.drawn, this.numbered])
            for (const [name, object] of Object.entries(objects))
            {
                object.geometry = part.picture.lists[name].geometry;
                object.visible = part.picture.lists[name].used > 0;
            }
        this.drawn.edges.visible = this.drawn.edges.visible && this.quality.edges;
    }

    // Draws, unless all is as it was.
    render()
    {
        this.resize();
        // A view that nobody has moved keeps showing the whole site when its room changes.
        if (this.fitted !== null && this.fitted !== this.parts()[0].width / this.height) this.fit();
        if (!this.isStale && this.drawnQuality === this.quality) return;
        this.isStale = false;
        this.drawnQuality = this.quality;
        this.renderer.setRenderTarget(null);
        for (const part of this.parts())
        {
            this.renderer.setViewport(part.left, 0, part.width, this.height);
            this.renderer.setScissor(part.left, 0, part.width, this.height);
            this.renderer.setClearColor(this.background);
            this.renderer.clear();
            this.aim(part);
            this.renderer.render(this.scene, this.camera);
        }
    }

    // Where on the canvas a point of the plan's part is, or null behind the viewer.
    onScreen(point)
    {
        const part = this.parts()[0];
        const at = point.clone().project(this.camera);
        if (at.z > 1) return null;
        return { x: part.left + (at.x + 1) / 2 * part.width, y: (1 - at.y) / 2 * this.height };
    }

    // The numbers of the entities seen in a box of the canvas, row by row from below, -1 for none.
    numbersIn(part, left, top, width, height)
    {
        const target = new THREE.WebGLRenderTarget(width, height, { minFilter: THREE.NearestFilter, magFilter: THREE.NearestFilter });
        this.aim(part);
        this.camera.setViewOffset(part.width, this.height, left - part.left, top, width, height);
        this.renderer.setRenderTarget(target);
        this.renderer.setClearColor(0x000000, 0);
        this.renderer.clear();
        this.renderer.render(this.numberScene, this.camera);
        const bytes = new Uint8Array(width * height * 4);
        this.renderer.readRenderTargetPixels(target, 0, 0, width, height, bytes);
        this.renderer.setRenderTarget(null);
        this.camera.clearViewOffset();
        target.dispose();
        const numbers = new Int32Array(width * height);
        for (let each = 0; each < numbers.length; ++each)
            numbers[each] = bytes[4 * each] + (bytes[4 * each + 1] << 8) + (bytes[4 * each + 2] << 16) - 1;
        return numbers;
    }

    pick(x, y)
    {
        const part = this.parts().find(each => x >= each.left && x < each.left + each.width);
        const number = part ? this.numbersIn(part, x, y, 1, 1)[0] : -1;
        return number >= 0 ? entities[number] : null;
    }
}
