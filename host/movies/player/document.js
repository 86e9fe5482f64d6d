// As much of a web page as the player asks for: elements that hold nothing but listeners, and a canvas of the machine.
'use strict';

const { add_color_matrix, read_matrix } = require('./color_matrix.js');

const nothing = () => {};

/** What takes listeners and is told of events. */
class Node {
    addEventListener(type, listener) {
        this.listeners ??= new Map();
        this.listeners.set(type, [...(this.listeners.get(type) ?? []), listener]);
    }
    removeEventListener(type, listener) {
        const others = (this.listeners?.get(type) ?? []).filter((one) => one !== listener);
        this.listeners?.set(type, others);
    }
    dispatchEvent(event) {
        for (const listener of this.listeners?.get(event.type) ?? []) listener.call(this, event);
        return true;
    }
    appendChild(child) {
        return child;
    }
    removeChild(child) {
        return child;
    }
    contains() {
        return false;
    }
    getRootNode() {
        return this;
    }
    remove() {}
}

class HTMLElement extends Node {
    style = { setProperty: nothing };
    setAttribute() {}
    setAttributeNS() {}
    focus() {}
    blur() {}
    click() {}
    setPointerCapture() {}
    releasePointerCapture() {}
    querySelector() {
        return null;
    }
    querySelectorAll() {
        return [];
    }
}

/** The part of the page that the movie fills; sizes are pixels. */
class Container extends HTMLElement {
    clientWidth = 1;
    clientHeight = 1;
}

/** Takes what `from` has, and `to` has not. */
function lend(to, from) {
    for (const name of Object.getOwnPropertyNames(from)) if (!(name in to)) to[name] = from[name];
}

/**
 * The globals of a page of its own for the player. `canvas` is the canvas package; `log` takes a line of text.
 *
 * Nothing here reaches the network, files or the machine: addresses that a movie asks for fail, and what it would open is
 * not opened.
 */
function make_page(canvas, log) {
    const Canvas = canvas.createCanvas(1, 1).constructor;
    const Context = canvas.createCanvas(1, 1).getContext('2d').constructor;
    lend(Canvas.prototype, Node.prototype);
    lend(Canvas.prototype, HTMLElement.prototype);
    let matrix = null;
    add_color_matrix(Context, canvas.createCanvas, () => matrix);

    const make_element = (name) => {
        if (name === 'feColorMatrix')
            return Object.assign(new HTMLElement(), { setAttribute: (what, to) => { if (what === 'values') matrix = read_matrix(to); } });
        if (name !== 'canvas') return new HTMLElement();
        const made = canvas.createCanvas(1, 1);
        made.style = { setProperty: nothing };
        return made;
    };
    const document = Object.assign(new Node(), {
        body: new HTMLElement(),
        baseURI: 'http://movie.invalid/',
        hidden: false,
        createElement: make_element,
        createElementNS: (_space, name) => make_element(name),
        querySelector: () => null,
        execCommand: () => false,
        location: { href: 'http://movie.invalid/', protocol: 'http:', host: 'movie.invalid', search: '' },
    });
    const refuse = (what) => {
        log(`refused: ${String(what).slice(0, 200)}`);
        return null;
    };
    const none = class {};
    const page = Object.assign(new Node(), {
        document,
        location: Object.assign({ assign: refuse, replace: refuse }, document.location),
        navigator: { language: 'en-US', platform: 'Linux', userAgent: '', getGamepads: () => [] },
        performance: { now: () => performance.now(), mark: nothing, measure: nothing },
        devicePixelRatio: 1,
        localStorage: null,
        isSecureContext: false,
        matchMedia: () => ({ matches: false, addEventListener: nothing }),
        open: refuse,
        confirm: () => false,
        fetch: (request) => {
            refuse(request?.url);
            return Promise.reject(new TypeError('the network is not to be had'));
        },
        setTimeout: (callback) => setTimeout(callback),
        clearTimeout,
        queueMicrotask,
        console: { log, info: log, warn: log, error: log, debug: nothing },
        crypto: { getRandomValues: (into) => require('node:crypto').webcrypto.getRandomValues(into) },
        TextDecoder,
        TextEncoder,
        URL,
        Request: class {
            constructor(url) {
                this.url = url;
            }
        },
        Node,
        HTMLElement,
        HTMLCanvasElement: Canvas,
        CanvasRenderingContext2D: Context,
        OffscreenCanvas: class {
            constructor(width, height) {
                return canvas.createCanvas(width, height);
            }
        },
        OffscreenCanvasRenderingContext2D: Context,
        Path2D: canvas.Path2D,
        ImageData: canvas.ImageData,
        DOMMatrix: canvas.DOMMatrix,
        // The player asks whether something is one of these; nothing is.
        Event: none,
        Gamepad: none,
        GamepadButton: none,
        HTMLAnchorElement: none,
        HTMLButtonElement: none,
        HTMLDocument: none,
        HTMLFormElement: none,
        HTMLInputElement: none,
        HTMLTextAreaElement: none,

        Response: none,
        ShadowRoot: none,
        WebGL2RenderingContext: none,
        WebGLRenderingContext: none,
        WebSocket: none,
    });
    page.window = page.self = page.globalThis = page;
    page.Window = { [Symbol.hasInstance]: (one) => one?.document === document };
    return page;
}

module.exports = { Container, make_page };
