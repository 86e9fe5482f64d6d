// Starts the packaged player without a browser, and plays movies with it.
'use strict';

const fs = require('node:fs');
const path = require('node:path');
const vm = require('node:vm');
const { Container, make_page } = require('./document.js');

const core_chunk = /^core\.ruffle\.[0-9a-f]+\.js$/;

/**
 * The modules of the player's core, as far as they are code of its own.
 *
 * The module that carries calls out of movies evaluates the names that movies give as code. It is left out, and `call_out`
 * (name, arguments) stands in its place.
 */
function core_modules(folder, context, call_out) {
    const chunks = fs.readdirSync(folder).filter((name) => core_chunk.test(name));
    for (const chunk of chunks) {
        const text = fs.readFileSync(path.join(folder, chunk), 'utf8');
        context.webpackChunkruffle_selfhosted = [];
        vm.runInContext(text, context, { filename: chunk });
        const [[ids, modules]] = context.webpackChunkruffle_selfhosted;
        const core = modules[ids[0]];
        const bridges = Object.keys(modules).filter((id) => modules[id] !== core);
        // One of the two cores holds a table of objects of its own, for browsers of long ago.
        if (bridges.length !== 1 || !/externref/.test(core.toString())) continue;
        const bridge = modules[bridges[0]].toString();
        if (!bridge.includes('new Function(')) throw new Error('the bridge of the player is not as expected');
        return { core, bridge: { id: bridges[0], exports: bridge_exports(bridge, call_out) } };
    }
    throw new Error('the core of the player is missing');
}

/** The names under which the core calls the two functions of its bridge are short and change with versions. */
function bridge_exports(text, call_out) {
    const names = /\.d\(\w+,\{(\w+):\(\)=>(\w+),(\w+):\(\)=>(\w+)\}\)/.exec(text);
    if (!names) throw new Error('the bridge of the player is not as expected');
    const calls = new RegExp(`function ${names[2]}\\([^)]*\\)\\{return new Function`).test(text) ? names[1] : names[3];
    const sounds = calls === names[1] ? names[3] : names[1];
    return { [calls]: call_out, [sounds]: () => {} };
}

function load_core({ core, bridge }) {
    const exports = {};
    const load = (id) => {
        if (String(id) === bridge.id) return bridge.exports;
        throw new Error(`the player asks for a module ${id}`);
    };
    load.r = () => {};
    load.d = (to, getters) => {
        for (const name of Object.keys(getters)) Object.defineProperty(to, name, { get: getters[name] });
    };
    core({}, exports, load);
    return exports;
}

/** The file of the machine code that goes with the core: the one that imports what the core offers. */
function machine_code(folder) {
    for (const name of fs.readdirSync(folder).filter((name) => name.endsWith('.wasm'))) {
        const bytes = fs.readFileSync(path.join(folder, name));
        if (bytes.includes('__wbindgen_init_externref_table')) return bytes;
    }
    throw new Error('the machine code of the player is missing');
}

/** Calls of the page that a movie's player makes and that mean nothing here. */
const unanswered = { get: (known, name) => known[name] ?? (() => null) };

class Player {
    /** `packages` is the folder of the packages. */
    constructor(packages) {
        this.current = null; // the movie that is doing something
        this.canvas = require(path.join(packages, '@napi-rs/canvas'));
        const folder = path.join(packages, '@ruffle-rs/ruffle');
        this.page = make_page(this.canvas, (...words) => this.log(words));
        this.page.requestAnimationFrame = (callback) => this.current?.frames.push(callback);
        this.page.cancelAnimationFrame = () => {};
        const context = vm.createContext(this.page, { codeGeneration: { strings: false, wasm: true } });
        this.core = load_core(core_modules(folder, context, (name, given) => this.called(name, given)));
        const options = vm.runInContext('(code) => ({ module_or_path: code })', context); // an object of its own world
        this.ready = this.core.default(options(machine_code(folder)));
    }

    log(words) {
        console.error(words.map(String).join(' ').slice(0, 300));
    }

    called(name, given) {
        this.current?.tell({ type: 'call', name, given: Array.from(given) });
        return null;
    }

    /** Texts can be written in that font from now on. */
    add_font(family, bytes) {
        this.canvas.GlobalFonts.register(bytes, family);
    }
}

/** A movie; `tell` is told what it does. */
class Movie {
    constructor(player, tell) {
        this.player = player;
        this.tell = tell;
        this.frames = []; // what waits for the next one
        this.loaded = false;
        this.shown = null; // the picture that was taken last
    }

    /** `how`: width, height (pixels), transparent, keep_size. */
    async load(bytes, how) {
        const { core, page } = this.player;
        const builder = new core.RuffleInstanceBuilder();
        builder.setPreferredRenderer('canvas');
        builder.setDeviceFontRenderer('canvas');
        builder.setAllowScriptAccess(true); // the bridge takes what is called
        builder.setAllowNetworking('all'); // lets calls through; the page has no network
        builder.setOpenUrlMode('deny');
        builder.setLogLevel('warn');
        builder.setWmode(how.transparent ? 'transparent' : 'opaque');
        builder.setScale(how.keep_size ? 'noscale' : 'exactfit');
        builder.setForceScale(true);
        builder.setStageAlign(how.keep_size ? 'TL' : '');
        builder.setForceAlign(true);
        builder.setLetterbox('off');
        builder.setShowMenu(true);
        builder.setQuality('high');
        builder.setMaxExecutionDuration(3600); // who shows movies has a limit of his own
        this.container = new Container();
        this.container.appendChild = (child) => {
            if (child.getContext) this.canvas = child;
            return child;
        };
        this.player.log([`loads ${bytes.length} bytes`]);
        const told = {
            setMetadata: () => { this.loaded = true; },
            callFSCommand: (name, given) => {
                this.tell({ type: 'fscommand', name, given: [given] });
                return true;
            },
            onCallbackAvailable: (name) => this.tell({ type: 'offer', name }),
            displayRootMovieDownloadFailedMessage: () => this.tell({ type: 'failed', reason: 'unreadable' }),
            panic: (error) => this.tell({ type: 'failed', reason: 'broken', text: String(error) }),
            getObjectId: () => 'movie',
        };
        this.size(how.width, how.height);
        const before = new Map(page.listeners ?? []);
        this.handle = await builder.build(this.container, new Proxy(told, unanswered));
        this.keys = new Map(); // the listeners of this movie
        for (const [type, listeners] of page.listeners ?? [])
            this.keys.set(type, listeners.filter((one) => !(before.get(type) ?? []).includes(one)));
        this.size(how.width, how.height);
        this.handle.load_data(new Uint8Array(bytes), {}, 'movie.swf');
        this.handle.play();
        this.press_focus();
    }

    size(width, height) {
        for (const one of [this.container, this.canvas])
            if (one) Object.assign(one, { clientWidth: width, clientHeight: height });
    }

    event(type, values) {
        return { type, preventDefault() {}, stopPropagation() {}, pointerId: 1, isPrimary: true, pointerType: 'mouse', ...values };
    }

    press_focus() {
        this.container.dispatchEvent(this.event('pointerdown', {}));
        this.container.dispatchEvent(this.event('focusin', {}));
    }

    /** `what`: move, down, up, enter or leave; `button`: 0 left, 1 middle, 2 right. */
    mouse(what, x, y, buttons = 0, button = 0) {
        if (what === 'down') this.press_focus();
        this.canvas.dispatchEvent(this.event(`pointer${what}`, { offsetX: x, offsetY: y, buttons, button }));
    }

    wheel(steps) {
        this.canvas.dispatchEvent(this.event('wheel', { deltaMode: 1, deltaY: -steps }));
    }

    /** `down`: keydown, or else keyup. */
    key(down, key, code, modifiers = {}) {
        const event = this.event(down ? 'keydown' : 'keyup', { key, code, ...modifiers });
        for (const listener of this.keys.get(event.type) ?? []) listener.call(this.player.page, event);
    }

    /** Calls what the movie offers under that name; null where it offers nothing. */
    call(name, given) {
        return this.handle.call_exposed_callback(name, given) ?? null;
    }

    /** An item of the player's own menu; the movie's timeline is reached by no other way. */
    choose(caption) {
        const items = this.handle.prepare_context_menu();
        const index = items.findIndex((item) => item.caption === caption);
        if (index >= 0 && items[index].enabled) this.handle.run_context_menu_callback(index);
        return items[index];
    }

    /** Lets the movie's own timeline run, or stand still. */
    run(on) {
        const items = this.handle.prepare_context_menu();
        if (items.find((item) => item.caption === 'Play')?.checked !== on) this.choose('Play');
    }

    /** From 1 on. Frames in between run their scripts; what these call is not told. */
    goto_frame(frame) {
        const { tell } = this;
        this.tell = () => {};
        this.choose('Rewind');
        for (let at = 1; at < frame; at++) {
            if (at + 1 === frame) this.tell = tell;
            this.choose('Forward');
        }
        this.tell = tell;
    }

    /** `time`: milliseconds of the movie's own clock. */
    tick(time) {
        for (const callback of this.frames.splice(0)) callback(time);
    }

    /** The picture, premultiplied RGBA; null while it is the same as before, or there is none. */
    picture() {
        if (!this.loaded || !this.canvas) return null;
        const now = this.canvas.data(); // a copy, which nobody draws into
        if (this.shown && this.shown.equals(now)) return null;
        this.shown = now;
        return { width: this.canvas.width, height: this.canvas.height, pixels: this.shown };
    }

    end() {
        this.handle?.destroy();
        this.handle = null;
        const { listeners } = this.player.page;
        for (const [type, own] of this.keys ?? [])
            listeners.set(type, (listeners.get(type) ?? []).filter((one) => !own.includes(one)));
        if (this.canvas) this.canvas.width = this.canvas.height = 1; // its memory is not waited for
    }
}

module.exports = { Movie, Player };
