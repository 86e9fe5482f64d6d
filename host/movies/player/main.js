// Plays movies for a program that shows them. It is told what to do on its standard input, one line of JSON after the other,
// some followed by as many bytes as they say; it answers on its standard output with frames: a head of four numbers of 32
// bits (kind, movie, width, height; little-endian) and what the kind says behind it.
'use strict';

const fs = require('node:fs');
const { Movie, Player } = require('./player.js');

const Kind = { ready: 1, picture: 2, same: 3, event: 4, done: 5 };
const max_events = 100; // of a movie in one turn
const max_text = 16 * 1024; // bytes of an event

/** Writes all of it now: what was said before a movie hangs has been said. */
function write(bytes) {
    for (let at = 0; at < bytes.length; ) {
        try {
            at += fs.writeSync(1, bytes, at);
        } catch (error) {
            if (error.code === 'EPIPE') process.exit(0);
            if (error.code !== 'EAGAIN') throw error;
            Atomics.wait(new Int32Array(new SharedArrayBuffer(4)), 0, 0, 1);
        }
    }
}

function send(kind, movie, width = 0, height = 0, content = null) {
    const head = Buffer.alloc(16);
    [kind, movie, width, height].forEach((number, index) => head.writeUInt32LE(number, index * 4));
    write(head);
    if (content) write(content);
}

function send_json(kind, movie, value) {
    let text = Buffer.from(JSON.stringify(value));
    if (text.length > max_text) text = Buffer.from(JSON.stringify({ type: 'dropped' }));
    send(kind, movie, text.length, 0, text);
}

/** What JSON can carry of an argument; objects of the movie become texts. */
function plain(value, depth = 0) {
    if (value === undefined || value === null) return null;
    if (typeof value === 'number') return Number.isFinite(value) ? value : null;
    if (typeof value === 'boolean') return value;
    if (Array.isArray(value) && depth < 4) return value.slice(0, 1000).map((one) => plain(one, depth + 1));
    return String(value).slice(0, max_text);
}

const movies = new Map();
const files = new Map(); // what comes to be loaded
let player = null;

function make_movie(id) {
    let told = 0;
    const movie = new Movie(player, (event) => {
        if (event.type === 'failed' || told++ < max_events) send_json(Kind.event, id, { ...event, given: event.given?.map((one) => plain(one)) });
    });
    movie.begin_turn = () => { told = 0; };
    movies.set(id, movie);
    return movie;
}

/** A turn of the event loop, in which what was promised is kept. */
const turn = () => new Promise((resolve) => setImmediate(resolve));

const deeds = {
    async load(movie, id, how) {
        const bytes = files.get(id);
        files.delete(id);
        await movie.load(bytes, how);
        for (let turns = 0; turns < 20 && !movie.loaded; turns++) await turn();
        if (!movie.loaded) movie.tell({ type: 'failed', reason: 'unreadable' });
    },
    size: (movie, _id, width, height) => movie.size(width, height),
    mouse: (movie, _id, ...given) => movie.mouse(...given),
    wheel: (movie, _id, steps) => movie.wheel(steps),
    key: (movie, _id, ...given) => movie.key(...given),
    call(movie, id, number, name, given) {
        send_json(Kind.event, id, { type: 'answer', number, value: plain(movie.call(name, given)) });
    },
    run: (movie, _id, on) => movie.run(on),
    goto_frame: (movie, _id, frame) => movie.goto_frame(frame),
};

async function turn_of(id, { time, todo }) {
    const movie = movies.get(id) ?? make_movie(id);
    movie.begin_turn();
    player.current = movie;
    for (const [deed, ...given] of todo) if (deed === 'load' || movie.handle) await deeds[deed](movie, id, ...given);
    movie.tick(time);
    await turn();
    // Before its first frame a movie shows nothing but its background.
    const picture = todo.some(([deed]) => deed === 'load') ? null : movie.picture();
    if (picture) send(Kind.picture, id, picture.width, picture.height, picture.pixels);
    else send(Kind.same, id);
    player.current = null;
}

const orders = {
    font: ({ family }, bytes) => player.add_font(family, bytes),
    file: ({ movie }, bytes) => files.set(movie, bytes),
    end({ movie }) {
        movies.get(movie)?.end();
        movies.delete(movie);
    },
    async tick({ number, movies: list }) {
        for (const one of list) await turn_of(one.movie, one);
        send(Kind.done, number);
    },
};

async function main() {
    player = new Player(process.argv[2]);
    await player.ready;
    send_json(Kind.ready, 0, { node: process.version });
    let chunks = [];
    let [held, needed] = [0, 1]; // bytes that are there, and that there must be to go on
    for await (const chunk of process.stdin) {
        chunks.push(chunk);
        held += chunk.length;
        if (held < needed) continue;
        const waiting = Buffer.concat(chunks);
        const rest = await follow_orders(waiting);
        chunks = [waiting.subarray(rest.from)];
        [held, needed] = [waiting.length - rest.from, rest.needed];
    }
}

/** Follows those that are whole. Answers where the next one begins and how many bytes of it there must be to go on. */
async function follow_orders(waiting) {
    let from = 0;
    for (;;) {
        const end = waiting.indexOf(10, from);
        if (end < 0) return { from, needed: waiting.length - from + 1 };
        const order = JSON.parse(waiting.toString('utf8', from, end));
        const behind = end + 1 + (order.bytes ?? 0);
        if (waiting.length < behind) return { from, needed: behind - from };
        await orders[order.op](order, Buffer.from(waiting.subarray(end + 1, behind)));
        from = behind;
    }
}

main().catch((error) => {
    console.error(String(error.stack).slice(0, 2000));
    process.exit(1);
});
