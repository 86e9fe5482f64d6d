// The machine's canvas has no filters of SVG. The player uses one of them: a matrix of colours for pictures and letters.
'use strict';

/** The twenty numbers of `values`; null for what is no matrix. */
function read_matrix(values) {
    const numbers = String(values).trim().split(/[\s,]+/).map(Number);
    return numbers.length === 20 && numbers.every(Number.isFinite) ? numbers : null;
}

/** Changes straight RGBA `pixels` in place. */
function apply_matrix(matrix, pixels) {
    const m = matrix;
    for (let at = 0; at < pixels.length; at += 4) {
        const [r, g, b, a] = [pixels[at], pixels[at + 1], pixels[at + 2], pixels[at + 3]];
        if (a === 0 && m[19] <= 0) continue;
        for (let to = 0; to < 4; to++) {
            const row = to * 5;
            pixels[at + to] = m[row] * r + m[row + 1] * g + m[row + 2] * b + m[row + 3] * a + m[row + 4] * 255;
        }
    }
}

/** Lets the contexts of `Context` draw pictures through `matrix()` while their filter names one. */
function add_color_matrix(Context, create_canvas, matrix) {
    const plain = Object.getOwnPropertyDescriptor(Context.prototype, 'filter');
    const draw = Context.prototype.drawImage;
    const through = new WeakSet();
    Object.defineProperty(Context.prototype, 'filter', {
        configurable: true,
        get: plain.get,
        set(value) {
            if (String(value).startsWith('url(')) {
                through.add(this);
            } else {
                through.delete(this);
                plain.set.call(this, value);
            }
        },
    });
    Context.prototype.drawImage = function (image, ...places) {
        const numbers = through.has(this) ? matrix() : null;
        if (!numbers) return draw.call(this, image, ...places);
        const [x, y, width, height, ...to] = places.length === 8 ? places
            : [0, 0, image.width, image.height, places[0], places[1], places[2] ?? image.width, places[3] ?? image.height];
        const colored = create_canvas(Math.max(1, Math.ceil(width)), Math.max(1, Math.ceil(height)));
        const context = colored.getContext('2d');
        draw.call(context, image, x, y, width, height, 0, 0, width, height);
        const picture = context.getImageData(0, 0, colored.width, colored.height);
        apply_matrix(numbers, picture.data);
        context.putImageData(picture, 0, 0);
        draw.call(this, colored, 0, 0, width, height, ...to);
    };
}

module.exports = { add_color_matrix, read_matrix };
