.pragma library

// Finds parts of a component the way a user would: by what they show.

function all(root, test) {
    const found = [];
    for (const child of Array.from(root.children)) {
        if (test(child))
            found.push(child);
        found.push(...all(child, test));
    }
    return found;
}

function first(root, test) {
    return all(root, test)[0] ?? null;
}

function isText(item) {
    return item.textFormat !== undefined && item.text !== undefined;
}

// The visible texts, in the order in which they were created.
function texts(root) {
    return all(root, item => isText(item) && item.visible && item.text !== "").map(item => item.text);
}

function text(root, shown) {
    return first(root, item => isText(item) && item.visible && item.text === shown);
}

function buttons(root) {
    return all(root, item => item.trigger !== undefined && item.title !== undefined);
}

function button(root, title) {
    return buttons(root).find(item => item.title === title) ?? null;
}

function field(root, placeholder) {
    return first(root, item => item.placeholder === placeholder && item.fieldText !== undefined);
}

function input(root, placeholder) {
    return first(field(root, placeholder), item => item.echoMode !== undefined);
}

// Pixels have eight bits a colour.
function isNear(one, other) {
    return ["r", "g", "b"].every(part => Math.abs(one[part] - other[part]) < 0.02);
}

function outputs(root) {
    return all(root, item => item.selectedText !== undefined && item.source !== undefined);
}
