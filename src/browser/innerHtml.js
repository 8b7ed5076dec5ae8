// Serializes the body of a page in the form that the program's markers expect.
(function () {
    const voidTags = new Set(["AREA", "BASE", "BR", "COL", "EMBED", "HR", "IMG", "INPUT", "LINK", "META", "PARAM",
        "SOURCE", "TRACK", "WBR"]);
    const rawTags = new Set(["SCRIPT", "STYLE", "XMP", "IFRAME", "NOEMBED", "NOFRAMES", "NOSCRIPT", "PLAINTEXT"]);

    function escaped(text) {
        return text.replace(/&/g, "&amp;").replace(/</g, "&lt;").replace(/>/g, "&gt;").replace(/\u00a0/g, "&nbsp;");
    }

    function styleValue(style) {
        return style.split(";").filter(part => part.trim() !== "").map(part => {
            const colon = part.indexOf(":");
            if (colon < 0) return part.trim();
            return part.slice(0, colon).trim().toUpperCase() + ": " + part.slice(colon + 1).trim();
        }).join("; ");
    }

    function attribute(attr) {
        const value = attr.name === "style" ? styleValue(attr.value) : attr.value;
        if (/^[\p{L}\p{N}\-._:\/#%]+$/u.test(value)) return " " + attr.name + "=" + value;
        return " " + attr.name + "=" + (value.includes('"') ? "'" + value + "'" : '"' + value + '"');
    }

    // An explicit stack, as a page can be nested deeper than calls can.
    const pieces = [];
    const stack = [{ nodes: document.body ? document.body.childNodes : [], at: 0, end: "", raw: false }];
    while (stack.length > 0) {
        const level = stack[stack.length - 1];
        if (level.at >= level.nodes.length) {
            pieces.push(level.end);
            stack.pop();
            continue;
        }
        const node = level.nodes[level.at++];
        if (node.nodeType === Node.TEXT_NODE) {
            pieces.push(level.raw ? node.data : escaped(node.data));
        } else if (node.nodeType === Node.COMMENT_NODE) {
            pieces.push("<!--" + node.data + "-->");
        } else if (node.nodeType === Node.ELEMENT_NODE) {
            const tag = node.localName.toUpperCase();
            pieces.push("<" + tag + Array.from(node.attributes, attribute).join("") + ">");
            if (!voidTags.has(tag)) {
                stack.push({ nodes: node.childNodes, at: 0, end: "</" + tag + ">", raw: rawTags.has(tag) });
            }
        }
    }
    return pieces.join("");
})();
